#pragma once

#include "cli/output-file.h"
#include "cli/survey-exporter.h"

// A JSON array with one object for each sighting, each on a line of its own.
class JsonExporter : public SurveyExporter
{
public:
  // Both stay with the caller.
  JsonExporter(OutputFile& the_output, const SurveyNames& the_names);

  void add(const std::string& file, const std::string& id, const Survey& survey) override;
  void finish() override;

private:
  OutputFile& output;
  const SurveyNames& names;
  bool has_rows = false;
};
