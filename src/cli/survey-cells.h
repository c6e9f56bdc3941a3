#pragma once

#include "store/survey-names.h"

#include <string>
#include <variant>
#include <vector>

// One value of a row of an export, with the name of its column. The value is std::monostate if
// the survey does not have the entry, or the data set does not have the name.
struct SurveyCell {
  const char* column;
  std::variant<std::monostate, int, bool, std::string> value;
};

// Returns the cells that all rows of a survey have in common. The columns and their order are
// the same for all surveys. `file` is the name of the survey's file without directories, `id`
// its survey_id().
std::vector<SurveyCell> survey_cells(const std::string& file, const std::string& id,
                                     const Survey& survey, const SurveyNames& names);

// Returns the cells of one sighting. The columns and their order are the same for all sightings.
std::vector<SurveyCell> sighting_cells(const Survey& survey, const SpeciesSighting& sighting,
                                       const SurveyNames& names);
