#pragma once

#include "store/survey.h"

#include <string>

// Returns a UUID of the entries of a survey (RFC 4122, version 5). Surveys with the same entries
// have the same id; the path of the file and the program that wrote it do not matter. Missing
// entries do not contribute to the id. So a new element in a later format does not change the
// ids of surveys without it.
std::string survey_id(const Survey& survey);
