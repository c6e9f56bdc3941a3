#pragma once

#include <string>

#include "request.h"

// The one file of an upload.
struct ReceivedSurvey {
  std::string name; // a name alone, without a directory
  std::string bytes;
};

// Takes the survey out of an upload. Throws a Refusal for anything but one form
// file with the control name "survey-file" that is a survey document.
ReceivedSurvey received_survey(const Request& request);
