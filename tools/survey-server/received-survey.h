#pragma once

#include <string>

#include "request.h"

// The file of an upload.
struct ReceivedSurvey {
  std::string name; // without a directory
  std::string bytes;
};

// Returns the survey of an upload. Throws a Refusal unless the form has exactly one file, with
// the control name "survey-file", that is a survey document.
ReceivedSurvey received_survey(const Request& request);
