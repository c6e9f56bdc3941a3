#pragma once

#include "cli/spool-file.h"
#include "cli/survey-exporter.h"
#include "cli/zip-writer.h"

// Writes a Darwin Core Archive (https://dwc.tdwg.org/text/). It is a zip file with four
// entries: a table of events, one for each survey; a table of occurrences, one for each
// sighting; meta.xml, which describes the columns; and eml.xml, which describes the data set.
// The tables are temporary files until finish() writes the archive.
class DarwinCoreExporter : public SurveyExporter
{
public:
  // REQUIRES: both parameters outlive this object. Throws CouldNotRun if a temporary file
  // cannot be created.
  DarwinCoreExporter(OutputFile& the_output, const SurveyNames& the_names);

  void add(const std::string& file, const std::string& id, const Survey& survey) override;
  void finish() override;

private:
  void add_occurrence(const std::string& id, const Survey& survey, const SpeciesSighting& sighting);

  const SurveyNames& names;
  OutputFile& output;
  SpoolFile events;
  SpoolFile occurrences;
};
