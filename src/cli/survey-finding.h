#pragma once

#include "store/survey-names.h"

#include <optional>
#include <string>
#include <vector>

#include "cli/finding.h"

// The survey in the file at `path`, without species that were marked and cleared again; or
// why it cannot be used with these data: it is no survey, or the data do not know its location,
// without which its ids have no meaning. The finding is set if and only if the survey is not.
std::optional<Survey> read_known_survey(const std::string& path, const SurveyNames& names,
                                        std::optional<Finding>& why_not);

// The species of a survey that the data do not know, as one fault.
std::optional<Finding> unknown_species(const std::string& path, const Survey& survey,
                                       const SurveyNames& names);
