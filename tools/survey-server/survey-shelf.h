#pragma once

#include <string>

#include "received-survey.h"

// Keeps a survey in the directory `dir` under its own name. The same bytes are
// kept once; other bytes under a taken name get a name beside it, with a number.
// Nothing is overwritten, and no part of a file is ever seen under such a name.
// Gives the name it has now. Throws a Refusal if it cannot be kept.
std::string keep_survey(const std::string& dir, const ReceivedSurvey& survey);
