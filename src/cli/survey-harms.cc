#include "cli/survey-harms.h"

#include "core/number.h"
#include "core/thrown-text.h"
#include "data/abundance-choices.h"
#include "data/reference-data.h"
#include "data/region-info.h"
#include "store/read-survey.h"

#include <algorithm>
#include <variant>

#include "cli/data-things.h"
#include "cli/survey-paths.h"

namespace {

void add_choices(const Survey& survey, std::vector<std::string>& keys)
{
  for (const SurveyField& field : survey_fields())
    if (const auto* const value = std::get_if<int Survey::*>(&field.value); value && field.choices)
      keys.push_back(thing_key::choice(field.choices, survey.**value));
}

void add_species(const Survey& survey, const std::string& region, const RegionFishInfo& fish,
                 std::vector<std::string>& keys)
{
  for (const SpeciesSighting& sighting : survey.species) {
    if (sighting.abun == 0)
      continue;
    keys.push_back(thing_key::species(region, sighting.id));
    const RegionFishInfo::Species* const species = fish.find_species(sighting.id);
    const bool is_presence = species && species->is_presence_only();
    keys.push_back(thing_key::abundance(
        is_presence ? AbundanceChoices::presence_subtype : survey.survey_subtype, sighting.abun));
  }
}

// Returns the keys of all things to which a survey refers, even to those that are not in the data
// sets.
std::vector<std::string> keys_of(const Survey& survey, const RegionInfo& regions)
{
  std::vector<std::string> keys{
      thing_key::place(survey.subregion.raw()), thing_key::type(survey.survey_subtype),
      thing_key::view(survey.species_view), thing_key::choice("divestart", survey.dive_start)};
  add_choices(survey, keys);
  const auto region = regions.subregion_regions.find(survey.subregion);
  if (region == regions.subregion_regions.end())
    return keys;
  const std::string code = region->second.raw();
  keys.push_back(thing_key::zone(code, to_int(survey.zonecode)));
  keys.push_back(thing_key::habitat(code, survey.habitat));
  const auto fish = regions.region_fish.find(code);
  if (fish != regions.region_fish.end())
    add_species(survey, code, fish->second, keys);
  return keys;
}

// Returns the harms to one survey without duplicates, in the order of the references.
std::vector<std::string> harms_to(const Survey& survey, const ReferenceData& old_data,
                                  const DataDiff& diff)
{
  std::vector<std::string> harms;
  for (const std::string& key : keys_of(survey, *old_data.region_info)) {
    const auto harm = diff.harms.find(key);
    if (harm != diff.harms.end() &&
        std::find(harms.begin(), harms.end(), harm->second) == harms.end())
      harms.push_back(harm->second);
  }
  return harms;
}

std::string join(const std::vector<std::string>& texts)
{
  std::string joined;
  for (const std::string& text : texts)
    joined += (joined.empty() ? "" : "; ") + text;
  return joined;
}

void judge_survey(const std::string& path, const ReferenceData& old_data,
                  const ReferenceData& new_data, const DataDiff& diff,
                  std::vector<Finding>& findings)
{
  const Survey survey = read_survey(path);
  const std::vector<std::string> harms = harms_to(survey, old_data, diff);
  if (harms.empty())
    return;
  const bool opens = new_data.region_info->subregion_regions.count(survey.subregion) == 1;
  findings.push_back(
      {path, std::nullopt, opens ? "survey-means-another" : "survey-does-not-open", Severity::error,
       (opens ? "This survey opens, but its meaning changes: " : "This survey no longer opens: ") +
           join(harms)});
}

} // namespace

std::vector<Finding> find_harmed_surveys(const std::string& path, const ReferenceData& old_data,
                                         const ReferenceData& new_data, const DataDiff& diff)
{
  std::vector<Finding> findings;
  for (const std::string& file : survey_paths({path}, findings)) {
    try {
      judge_survey(file, old_data, new_data, diff, findings);
    } catch (...) {
      findings.push_back({file, std::nullopt, "survey-not-readable", Severity::warning,
                          "This file cannot be opened: " + thrown_text("unknown error", "").raw()});
    }
  }
  return findings;
}
