#pragma once

#include <string>

// A temporary file for the bytes of a survey, for example of one in an archive. The destructor
// removes it.
class ScratchSurvey
{
public:
  // Throws CouldNotRun if the file cannot be written.
  explicit ScratchSurvey(const std::string& bytes);
  ~ScratchSurvey();
  ScratchSurvey(const ScratchSurvey&) = delete;
  ScratchSurvey& operator=(const ScratchSurvey&) = delete;

  // Returns the reason why the program cannot open the survey, or an empty text if it can.
  std::string fault() const;

private:
  std::string path;
};
