#include "cli/survey-finding.h"

#include "core/thrown-text.h"
#include "store/read-survey.h"

#include <algorithm>

namespace {

void drop_cleared_species(std::vector<SpeciesSighting>& species)
{
  species.erase(std::remove_if(species.begin(), species.end(),
                               [](const SpeciesSighting& sighting) { return sighting.abun == 0; }),
                species.end());
}

} // namespace

std::optional<Survey> read_known_survey(const std::string& path, const SurveyNames& names,
                                        std::optional<Finding>& why_not)
{
  try {
    Survey survey = read_survey(path);
    drop_cleared_species(survey.species);
    if (names.knows_location(survey))
      return survey;
    why_not = {path,
               {},
               "unknown-location",
               Severity::error,
               "The data set does not contain the location " + survey.subregion.raw() +
                   ", so the ids of the survey have no meaning"};
  } catch (...) {
    why_not = {path,
               {},
               "not-readable",
               Severity::error,
               "The file cannot be opened: " +
                   thrown_text("unknown failure", "unknown failure").raw()};
  }
  return std::nullopt;
}

std::optional<Finding> unknown_species(const std::string& path, const Survey& survey,
                                       const SurveyNames& names)
{
  std::string ids;
  for (const SpeciesSighting& sighting : survey.species)
    if (!names.species(survey, sighting.id))
      ids += (ids.empty() ? "" : ", ") + std::to_string(sighting.id);
  if (ids.empty())
    return std::nullopt;
  return Finding{path,
                 {},
                 "unknown-species",
                 Severity::error,
                 "The program does not show species that are not in the data set: " + ids};
}
