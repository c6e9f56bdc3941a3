#pragma once

#include <string>

#include "cli/readable-survey.h"

// Returns a survey as an HTML page. The page needs no other file and no script, and it supports
// printing and dark mode. It is also well-formed XML. `file` is the name of the survey's file.
std::string survey_page(const ReadableSurvey& survey, const std::string& file);

// Returns an HTML page that reports the `reason` why a file cannot be shown.
std::string failure_page(const std::string& file, const Glib::ustring& reason);
