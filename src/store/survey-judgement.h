#pragma once

#include "store/survey.h"

#include <glibmm/ustring.h>

#include <ctime>
#include <string>
#include <vector>

struct ReferenceData;

// One missing or wrong entry of a survey.
struct SurveyComplaint {
  std::string field;  // the name of the element in the document; "year" for the date
  Glib::ustring text; // the value, if there is one, and its fault; plain text
};

// Returns the complaints of the Confirmation page about a survey at the local time `now`, in the
// order of the page. A survey without complaints can be marked for upload. REQUIRES: the data
// have the survey's location.
std::vector<SurveyComplaint> survey_complaints(const Survey& survey, const ReferenceData& data,
                                               std::time_t now);
