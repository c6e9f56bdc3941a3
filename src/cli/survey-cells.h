#pragma once

#include "store/survey-names.h"

#include <string>
#include <variant>
#include <vector>

// One value of a row of an export, under the name of its column. What was not entered or
// chosen, and names that the data set lacks, have no value.
struct SurveyCell {
  const char* column;
  std::variant<std::monostate, int, bool, std::string> value;
};

// The cells that all rows of a survey have in common. Always the same columns, in the same
// order. `file` is the name of its file, without directories.
std::vector<SurveyCell> survey_cells(const std::string& file, const std::string& id,
                                     const Survey& survey, const SurveyNames& names);

// The cells of one sighting, likewise.
std::vector<SurveyCell> sighting_cells(const Survey& survey, const SpeciesSighting& sighting,
                                       const SurveyNames& names);
