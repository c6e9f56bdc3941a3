#include "store/random-survey.h"

#include "data/data-defs.h"
#include "data/habitat-info.h"
#include "data/region-info.h"
#include "store/survey-fields.h"

#include <algorithm>
#include <iterator>

void RandomSurveys::make(RandomSurvey& survey)
{
  choose_place(survey);
  choose_type(survey);
  choose_time(survey.form);
  choose_conditions(survey);
  see_species(survey);
  ++made;
}

Glib::ustring RandomSurveys::words(int most)
{
  static const char* const fish = "🐟";
  static const char* const person = "👩‍🔬";
  static const char* const pieces[] = {
      "a",    "Z",       "7",   "&",    "<",      ">",      "\"", "'", "&amp;", "<b>",    "]]>",
      "<!--", "%s",      "\\n", "\t",   " ",      "ñ",      "É",  "ß", "魚",    "さかな", "Рыба",
      "سمك",  "e\u0301", fish,  person, "\u00a0", "\u200f", "--", "/", "."};
  Glib::ustring text;
  for (int count = below(most + 1); count > 0; --count)
    text += pieces[below(static_cast<int>(std::size(pieces)))];
  return text;
}

int RandomSurveys::one_of(const std::vector<int>& ids, int none)
{
  return ids.empty() || seldom()
             ? none
             : ids[static_cast<std::size_t>(below(static_cast<int>(ids.size())))];
}

void RandomSurveys::choose_place(RandomSurvey& survey)
{
  const auto& places = tables.regions.subregion_regions;
  const auto place = std::next(places.begin(), made % static_cast<int>(places.size()));
  survey.form.subregion = place->first;
  survey.data.subregion = place->first;
  survey.data.region = place->second;
  survey.data.region_fish = &tables.regions.region_fish[place->second];
  survey.form.zonecode =
      seldom() ? words(4)
               : Glib::ustring(std::to_string(one_of(survey.data.region_fish->geog_ids, 0)));
  survey.form.species_view =
      one_of(tables.regions.subregions[place->first].view_choices.values, -1);
}

// Species can only be marked in a survey with a type.
void RandomSurveys::choose_type(RandomSurvey& survey)
{
  survey.form.survey_subtype =
      one_of(tables.regions.survey_types[survey.form.subregion].values, -1);
  if (survey.form.survey_subtype < 0)
    return;
  survey.data.survey_subtype =
      &tables.regions.regions[static_cast<std::size_t>(survey.form.survey_subtype)];
  survey.data.abundance_choices = tables.abundances.find_subtype(survey.form.survey_subtype);
}

void RandomSurveys::choose_time(Survey& form)
{
  form.member_id = words(6);
  form.last_name = words(12);
  form.year = padded(seldom() ? 0 : 1993 + below(28), 4); // years that the box offers
  form.month = below(13);
  form.mday = below(32);
  form.dive_start = one_of(tables.defs.defs["divestart"].values, -1);
}

void RandomSurveys::choose_conditions(RandomSurvey& survey)
{
  Survey& form = survey.form;
  form.surface_temp = seldom() ? words(3) : Glib::ustring(std::to_string(below(90)));
  form.bottom_temp = seldom() ? words(3) : Glib::ustring(std::to_string(below(90)));
  form.temp_units = below(2) == 0 ? "F" : "C";
  form.bottom_time = seldom() ? words(3) : Glib::ustring(std::to_string(below(200)));
  form.bottom_time_confirmed = below(2) == 0;
  for (const SurveyField& field : survey_fields()) {
    if (field.choices)
      set_field_text(field, std::to_string(one_of(tables.defs.defs[field.choices].values, -1)),
                     form);
  }
  const auto& habitats = tables.habitats.region_habitats[survey.data.region].values;
  const auto turn = static_cast<std::size_t>(made) / tables.regions.subregion_regions.size();
  form.habitat = turn % 5 == 4 || habitats.empty() ? -1 : habitats[turn % habitats.size()];
}

void RandomSurveys::see_species(RandomSurvey& survey)
{
  if (!survey.data.abundance_choices)
    return;
  std::vector<int> ids;
  for (const auto& species : survey.data.region_fish->species)
    if (species.speciesid > 0)
      ids.push_back(species.speciesid);
  std::shuffle(ids.begin(), ids.end(), random);
  const int most = std::min<int>(500, static_cast<int>(ids.size()));
  const int count = made % 50 == 0 ? most : below(std::min(most, 60) + 1);
  ids.resize(static_cast<std::size_t>(count));
  for (const int id : ids) {
    const auto classes =
        classes_of(survey, survey.data.region_fish->find_species(id)->invertebratetype);
    if (!classes.empty())
      survey.data.abundances[id] = below(20) == 0 ? 0 : one_of(classes, classes.front());
  }
}

// Returns the abundance classes that the menu of a species offers.
std::vector<int> RandomSurveys::classes_of(const RandomSurvey& survey, int invertebratetype) const
{
  const auto* const list = invertebratetype == 2
                               ? tables.abundances.find_subtype(AbundanceChoices::presence_subtype)
                               : survey.data.abundance_choices;
  std::vector<int> classes;
  for (std::size_t i = 1; list && i < list->choices.size(); ++i)
    if (list->choices[i].responseid > 0)
      classes.push_back(static_cast<int>(i));
  return classes;
}
