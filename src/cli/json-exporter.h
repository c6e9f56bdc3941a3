#pragma once

#include "cli/output-file.h"
#include "cli/survey-exporter.h"

// Writes a JSON array with one object for each sighting. Each object is on its own line.
class JsonExporter : public SurveyExporter
{
public:
  // REQUIRES: both parameters outlive this object. Throws CouldNotRun if the output fails.
  JsonExporter(OutputFile& the_output, const SurveyNames& the_names);

  void add(const std::string& file, const std::string& id, const Survey& survey) override;
  void finish() override;

private:
  OutputFile& output;
  const SurveyNames& names;
  bool has_rows = false;
};
