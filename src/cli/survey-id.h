#pragma once

#include "store/survey.h"

#include <string>

// A UUID made of what the survey says (RFC 4122, version 5): the same for the same entries,
// whatever the file is called, where it lies and which program wrote it. Texts of no entry
// have no part in it, so an element that a later format adds changes no id of a survey
// that lacks it.
std::string survey_id(const Survey& survey);
