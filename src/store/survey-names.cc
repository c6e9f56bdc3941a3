#include "store/survey-names.h"

#include "core/text.h"
#include "data/abundance-choices.h"
#include "data/data-defs.h"
#include "data/habitat-info.h"
#include "data/region-info.h"
#include "data/zone-code.h"

#include <algorithm>

namespace {

// Returns the value of `key`, or null if the map lacks the key.
template<typename Map>
const typename Map::mapped_type* find_in(const Map& map, const typename Map::key_type& key)
{
  const auto found = map.find(key);
  return found == map.end() ? nullptr : &found->second;
}

Glib::ustring text_or_empty(const Glib::ustring* text)
{
  return text ? *text : Glib::ustring();
}

Glib::ustring label_of(const FromCSV::Def* choices, int value)
{
  if (!choices || value < 0)
    return {};
  const auto found = std::find(choices->values.begin(), choices->values.end(), value);
  const auto index = static_cast<std::size_t>(found - choices->values.begin());
  return index < choices->labels.size() ? choices->labels[index] : Glib::ustring();
}

} // namespace

bool SurveyNames::knows_location(const Survey& survey) const
{
  return data.region_info->subregion_regions.count(survey.subregion) != 0;
}

Glib::ustring SurveyNames::region_code(const Survey& survey) const
{
  return text_or_empty(find_in(data.region_info->subregion_regions, survey.subregion));
}

Glib::ustring SurveyNames::region(const Survey& survey) const
{
  const auto* const types = find_in(data.region_info->subregion_ids, survey.subregion);
  if (!types || types->empty())
    return {};
  return data.region_info->regions[static_cast<std::size_t>(types->front())].regionname;
}

Glib::ustring SurveyNames::location(const Survey& survey) const
{
  return text_or_empty(find_in(data.region_info->subregion_names, survey.subregion));
}

const Region* SurveyNames::survey_type(const Survey& survey) const
{
  const auto* const types = find_in(data.region_info->subregion_ids, survey.subregion);
  const int id = survey.survey_subtype;
  if (!types || std::find(types->begin(), types->end(), id) == types->end())
    return nullptr;
  return &data.region_info->regions[static_cast<std::size_t>(id)];
}

Glib::ustring SurveyNames::zone(const Survey& survey) const
{
  const RegionFishInfo* const fish = fish_of(survey);
  return fish ? full_zone_name(trim_ws(survey.zonecode), fish->geog_names) : Glib::ustring();
}

Glib::ustring SurveyNames::habitat(const Survey& survey) const
{
  return label_of(find_in(data.habitat_info->region_habitats, region_code(survey)), survey.habitat);
}

Glib::ustring SurveyNames::species_view(const Survey& survey) const
{
  const auto* const place = find_in(data.region_info->subregions, survey.subregion);
  return place ? label_of(&place->view_choices, survey.species_view) : Glib::ustring();
}

Glib::ustring SurveyNames::choice(const char* group, int value) const
{
  return label_of(find_in(data.data_defs->defs, group), value);
}

const RegionFishInfo* SurveyNames::fish_of(const Survey& survey) const
{
  return find_in(data.region_info->region_fish, region_code(survey));
}

const RegionFishInfo::Species* SurveyNames::species(const Survey& survey, int id) const
{
  const RegionFishInfo* const fish = fish_of(survey);
  return fish ? fish->find_species(id) : nullptr;
}

// Looks up the id in the file's list, because the table also has families that the reader of the
// species file has added.
const RegionFishInfo::Family* SurveyNames::family_of(const Survey& survey, int species_id) const
{
  const RegionFishInfo::Species* const found = species(survey, species_id);
  if (!found)
    return nullptr;
  const RegionFishInfo& fish = *fish_of(survey);
  const bool is_in_file =
      std::any_of(fish.family_ids.begin(), fish.family_ids.end(),
                  [&](const Glib::ustring& id) { return id.raw() == found->familyid; });
  return is_in_file ? find_in(fish.families, found->familyid) : nullptr;
}

Glib::ustring SurveyNames::abundance(const Survey& survey, const SpeciesSighting& sighting) const
{
  const RegionFishInfo::Species* const found = species(survey, sighting.id);
  const bool presence_only = found && found->is_presence_only();
  const auto* const list = data.abundance_choices->find_subtype(
      presence_only ? AbundanceChoices::presence_subtype : survey.survey_subtype);
  const auto index = static_cast<std::size_t>(sighting.abun);
  return list && sighting.abun > 0 && index < list->choices.size() ? list->choices[index].label
                                                                   : Glib::ustring();
}
