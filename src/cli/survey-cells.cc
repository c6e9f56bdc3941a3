#include "cli/survey-cells.h"

#include "core/markup.h"
#include "core/number.h"
#include "data/region.h"

namespace {

using Value = decltype(SurveyCell::value);

Value text(const Glib::ustring& words)
{
  return words.empty() ? Value() : Value(words.make_valid().raw());
}

// Returns the value for a name of the data, which can contain tags.
Value name(const Glib::ustring& markup)
{
  return text(without_markup(markup));
}

Value number(int value, int none)
{
  return value == none ? Value() : Value(value);
}

using Cells = std::vector<SurveyCell>;

void add_place(Cells& cells, const Survey& survey, const SurveyNames& names)
{
  const Region* const type = names.survey_type(survey);
  cells.insert(cells.end(), {{"member_id", text(survey.member_id)},
                             {"last_name", text(survey.last_name)},
                             {"region", text(names.region_code(survey))},
                             {"region_name", name(names.region(survey))},
                             {"subregion", text(survey.subregion)},
                             {"subregion_name", name(names.location(survey))},
                             {"survey_subtype", number(survey.survey_subtype, -1)},
                             {"survey_subtype_name", type ? name(type->surveytypename) : Value()},
                             {"zonecode", text(survey.zonecode)},
                             {"zone_name", name(names.zone(survey))}});
}

void add_time(Cells& cells, const Survey& survey, const SurveyNames& names)
{
  cells.insert(cells.end(),
               {{"year", number(to_int(survey.year), 0)},
                {"month", number(survey.month, 0)},
                {"mday", number(survey.mday, 0)},
                {"dive_start", number(survey.dive_start, -1)},
                {"dive_start_name", name(names.choice("divestart", survey.dive_start))},
                {"bottom_time", text(survey.bottom_time)},
                {"bottom_time_confirmed", survey.bottom_time_confirmed}});
}

void add_conditions(Cells& cells, const Survey& survey, const SurveyNames& names)
{
  cells.insert(cells.end(), {{"surface_temp", text(survey.surface_temp)},
                             {"bottom_temp", text(survey.bottom_temp)},
                             {"temp_units", text(survey.temp_units)}});
  const struct {
    const char* column;
    const char* name_column;
    const char* group;
    int value;
  } choices[] = {{"visibility", "visibility_name", "visibility", survey.visibility},
                 {"avg_depth", "avg_depth_name", "depth", survey.avg_depth},
                 {"max_depth", "max_depth_name", "depth", survey.max_depth},
                 {"current", "current_name", "current", survey.current}};
  for (const auto& choice : choices) {
    cells.push_back({choice.column, number(choice.value, -1)});
    cells.push_back({choice.name_column, name(names.choice(choice.group, choice.value))});
  }
  cells.insert(cells.end(), {{"habitat", number(survey.habitat, -1)},
                             {"habitat_name", name(names.habitat(survey))},
                             {"species_view", number(survey.species_view, -1)},
                             {"species_view_name", name(names.species_view(survey))}});
}

} // namespace

std::vector<SurveyCell> survey_cells(const std::string& file, const std::string& id,
                                     const Survey& survey, const SurveyNames& names)
{
  Cells cells = {{"file", text(file)}, {"survey_id", text(id)}};
  add_place(cells, survey, names);
  add_time(cells, survey, names);
  add_conditions(cells, survey, names);
  return cells;
}

std::vector<SurveyCell> sighting_cells(const Survey& survey, const SpeciesSighting& sighting,
                                       const SurveyNames& names)
{
  static const RegionFishInfo::Species no_species;
  static const RegionFishInfo::Family no_family;
  const auto* const found = names.species(survey, sighting.id);
  const auto* const found_family = names.family_of(survey, sighting.id);
  const auto& species = found ? *found : no_species;
  const auto& family = found_family ? *found_family : no_family;
  return {{"species_id", sighting.id},
          {"scientific_name", name(species.scientificname)},
          {"common_name", name(species.commonname)},
          {"spanish_name", name(species.spanishname)},
          {"family_id", text(family.id)},
          {"family_scientific_name", name(family.scientificname)},
          {"family_common_name", name(family.commonname)},
          {"abundance", sighting.abun},
          {"abundance_name", name(names.abundance(survey, sighting))},
          {"response_id", number(sighting.resp, -1)}};
}
