#pragma once

#include "store/survey-names.h"

#include <optional>
#include <string>
#include <vector>

#include "cli/finding.h"

// Returns the survey in the file at `path`, without species that the user has cleared again.
// If the file is not a survey, or its location is not in the data set, returns nullopt and sets
// `why_not`. Without the location, the ids have no meaning.
std::optional<Survey> read_known_survey(const std::string& path, const SurveyNames& names,
                                        std::optional<Finding>& why_not);

// Returns one finding for all species of the survey that are not in the data set, or nullopt if
// there are none.
std::optional<Finding> unknown_species(const std::string& path, const Survey& survey,
                                       const SurveyNames& names);
