#pragma once

#include "cli/output-file.h"
#include "cli/survey-exporter.h"

// One row of comma-separated values for each sighting, below a row of headings.
class CsvExporter : public SurveyExporter
{
public:
  // Both stay with the caller.
  CsvExporter(OutputFile& the_output, const SurveyNames& the_names);

  void add(const std::string& file, const std::string& id, const Survey& survey) override;
  void finish() override {}

private:
  OutputFile& output;
  const SurveyNames& names;
};
