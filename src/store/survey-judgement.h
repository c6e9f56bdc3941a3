#pragma once

#include "store/survey.h"

#include <glibmm/ustring.h>

#include <ctime>
#include <string>
#include <vector>

struct ReferenceData;

// One entry of a survey that is missing or cannot be right.
struct SurveyComplaint {
  std::string field;  // the element of the document; "year" for the date as a whole
  Glib::ustring text; // what is wrong, with the value if there is one; plain text
};

// What the Confirmation page would mark in a survey of a known location at the local time
// `now`, in the order of the page. A survey without complaints can be marked for upload.
std::vector<SurveyComplaint> survey_complaints(const Survey& survey, const ReferenceData& data,
                                               std::time_t now);
