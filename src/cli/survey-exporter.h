#pragma once

#include "store/survey-names.h"

#include <string>

// Writes surveys one after the other in some format; none is kept in memory.
class SurveyExporter
{
public:
  virtual ~SurveyExporter() = default;

  // `file` is the name of the survey's file, without directories, and `id` its survey_id().
  virtual void add(const std::string& file, const std::string& id, const Survey& survey) = 0;
  // Writes what comes after the last survey.
  virtual void finish() = 0;
};
