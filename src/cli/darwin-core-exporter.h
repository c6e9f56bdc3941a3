#pragma once

#include "cli/spool-file.h"
#include "cli/survey-exporter.h"
#include "cli/zip-writer.h"

// A Darwin Core Archive: a zip of a table of events, one for each survey, and a table of
// occurrences, one for each sighting, with meta.xml, which describes their columns, and
// eml.xml, which describes the whole (https://dwc.tdwg.org/text/). The tables are temporary
// files until finish().
class DarwinCoreExporter : public SurveyExporter
{
public:
  // Both stay with the caller.
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
