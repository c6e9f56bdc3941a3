#pragma once

#include <string>

#include "received-survey.h"

// Stores a survey in the directory `dir` under its own name and returns the name of the file.
// Stores the same bytes only once. If other bytes have that name, adds a number. Never
// overwrites a file, and never shows an incomplete file under such a name. Throws a Refusal if
// the survey cannot be stored.
std::string keep_survey(const std::string& dir, const ReceivedSurvey& survey);
