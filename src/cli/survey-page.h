#pragma once

#include <string>

#include "cli/readable-survey.h"

// A survey as one HTML page that needs no other file and runs no script. It can be
// printed, and it follows the user's choice of light or dark colours. `file` is the name
// of the survey's file. The page is also well-formed XML.
std::string survey_page(const ReadableSurvey& survey, const std::string& file);

// A page that says why a file cannot be shown.
std::string failure_page(const std::string& file, const Glib::ustring& reason);
