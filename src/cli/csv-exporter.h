#pragma once

#include "cli/output-file.h"
#include "cli/survey-exporter.h"

// Writes a row of headings and then one row of comma-separated values for each sighting.
class CsvExporter : public SurveyExporter
{
public:
  // REQUIRES: both parameters outlive this object. Throws CouldNotRun if the output fails.
  CsvExporter(OutputFile& the_output, const SurveyNames& the_names);

  void add(const std::string& file, const std::string& id, const Survey& survey) override;
  void finish() override {}

private:
  OutputFile& output;
  const SurveyNames& names;
};
