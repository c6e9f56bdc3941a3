#pragma once

#include "store/survey-names.h"

#include <string>

// Writes surveys one after the other in one format. Does not collect them in memory.
class SurveyExporter
{
public:
  virtual ~SurveyExporter() = default;

  // Writes a survey. `file` is the name of its file without directories, `id` its survey_id().
  // Throws CouldNotRun if the output fails.
  virtual void add(const std::string& file, const std::string& id, const Survey& survey) = 0;
  // Writes the end of the output. Call it once, after the last survey. Throws CouldNotRun if the
  // output fails.
  virtual void finish() = 0;
};
