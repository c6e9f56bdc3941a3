#pragma once

#include <string>

// The bytes of a survey that is in no file of its own, as a temporary file.
class ScratchSurvey
{
public:
  // Throws CouldNotRun if there is no place for it.
  explicit ScratchSurvey(const std::string& bytes);
  ~ScratchSurvey();
  ScratchSurvey(const ScratchSurvey&) = delete;
  ScratchSurvey& operator=(const ScratchSurvey&) = delete;

  // Why the program cannot open the survey; empty if it can.
  std::string fault() const;

private:
  std::string path;
};
