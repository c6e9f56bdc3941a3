#include "cli/readable-survey.h"

#include "core/markup.h"
#include "core/number.h"
#include "core/text.h"
#include "data/region.h"

#include <array>
#include <cstdio>

namespace {

// The elements of a document and their labels in the program.
constexpr struct {
  const char* field;
  const char* label;
} labels[] = {{"member_id", "Member number"},
              {"last_name", "Last name"},
              {"subregion", "Location"},
              {"survey_subtype", "Survey type"},
              {"year", "Date"},
              {"dive_start", "Start time"},
              {"zonecode", "Zone"},
              {"surface_temp", "Surface temperature"},
              {"bottom_temp", "Bottom temperature"},
              {"bottom_time", "Bottom time"},
              {"visibility", "Visibility"},
              {"avg_depth", "Average depth"},
              {"max_depth", "Maximum depth"},
              {"current", "Current"},
              {"habitat", "Habitat"},
              {"species_view", "List of species"},
              {"ids", "Species"}};

const char* label_of(const std::string& field)
{
  for (const auto& row : labels)
    if (field == row.field)
      return row.label;
  return "Survey";
}

Glib::ustring date_of(const Survey& survey)
{
  if (survey.year.raw() == "0000" && survey.month == 0 && survey.mday == 0)
    return {};
  std::array<char, 32> rest{};
  std::snprintf(rest.data(), rest.size(), "-%02d-%02d", survey.month, survey.mday);
  return survey.year + rest.data();
}

// Returns the name of a choice, or its number if the name is empty.
Glib::ustring name_or_number(const Glib::ustring& name, int number)
{
  if (!name.empty())
    return without_markup(name);
  return number < 0 ? "" : "number " + std::to_string(number);
}

Glib::ustring with_unit(const Glib::ustring& typed, const Glib::ustring& unit)
{
  const Glib::ustring text = trim_ws(typed);
  return text.empty() ? text : text + " " + unit;
}

Glib::ustring name_with_code(const Glib::ustring& code, const Glib::ustring& name)
{
  return name.empty() ? code : without_markup(name) + " (" + code + ")";
}

Glib::ustring type_name(const Survey& survey, const SurveyNames& names)
{
  const Region* const type = names.survey_type(survey);
  return name_or_number(type ? Glib::ustring(type->surveytypename) : "", survey.survey_subtype);
}

using Facts = std::vector<ReadableSurvey::Fact>;

void add_place_and_time(Facts& facts, const Survey& survey, const SurveyNames& names)
{
  facts.insert(facts.end(),
               {{label_of("member_id"), survey.member_id},
                {label_of("last_name"), survey.last_name},
                {label_of("subregion"), name_with_code(survey.subregion, names.location(survey))},
                {label_of("survey_subtype"), type_name(survey, names)},
                {label_of("year"), date_of(survey)},
                {label_of("dive_start"),
                 name_or_number(names.choice("divestart", survey.dive_start), survey.dive_start)},
                {label_of("zonecode"), name_with_code(survey.zonecode, names.zone(survey))}});
}

void add_conditions(Facts& facts, const Survey& survey, const SurveyNames& names)
{
  const Glib::ustring degrees = survey.temp_units.raw() == "C" ? "\u00b0C" : "\u00b0F";
  const Glib::ustring minutes = survey.bottom_time_confirmed ? "minutes, confirmed" : "minutes";
  const auto choice = [&](const char* group, int value) {
    return name_or_number(names.choice(group, value), value);
  };
  facts.insert(facts.end(),
               {{label_of("surface_temp"), with_unit(survey.surface_temp, degrees)},
                {label_of("bottom_temp"), with_unit(survey.bottom_temp, degrees)},
                {label_of("bottom_time"), with_unit(survey.bottom_time, minutes)},
                {label_of("visibility"), choice("visibility", survey.visibility)},
                {label_of("avg_depth"), choice("depth", survey.avg_depth)},
                {label_of("max_depth"), choice("depth", survey.max_depth)},
                {label_of("current"), choice("current", survey.current)},
                {label_of("habitat"), name_or_number(names.habitat(survey), survey.habitat)},
                {label_of("species_view"),
                 name_or_number(names.species_view(survey), survey.species_view)}});
}

ReadableSurvey::Species readable_species(const Survey& survey, const SpeciesSighting& sighting,
                                         const SurveyNames& names)
{
  const auto* const species = names.species(survey, sighting.id);
  const auto* const family = names.family_of(survey, sighting.id);
  ReadableSurvey::Species row;
  row.id = sighting.id;
  row.common_name = species ? without_markup(species->commonname) : Glib::ustring();
  row.scientific_name = species ? without_markup(species->scientificname) : Glib::ustring();
  if (!species)
    row.common_name = "Unknown species";
  if (family)
    row.family =
        without_markup(family->commonname.empty() ? family->scientificname : family->commonname);
  row.abundance = name_or_number(names.abundance(survey, sighting), sighting.abun);
  return row;
}

Glib::ustring in_one_line(const Glib::ustring& text)
{
  Glib::ustring line;
  for (const gunichar c : text.make_valid())
    line += g_unichar_iscntrl(c) ? gunichar{' '} : c;
  return line;
}

std::string text_lines(const std::vector<ReadableSurvey::Fact>& facts)
{
  constexpr std::size_t width = 21;
  std::string text;
  for (const auto& fact : facts) {
    const std::string label = fact.label + std::string(":");
    text += label + std::string(width - label.size(), ' ') +
            (fact.text.empty() ? "-" : in_one_line(fact.text).raw()) + "\n";
  }
  return text;
}

} // namespace

ReadableSurvey readable_survey(const Survey& survey, const SurveyNames& names,
                               const std::vector<SurveyComplaint>& complaints)
{
  ReadableSurvey readable;
  const Glib::ustring date = date_of(survey);
  const Glib::ustring place =
      names.zone(survey).empty() ? names.location(survey) : names.zone(survey);
  readable.title = date.empty() ? "Survey" : "Survey on " + date;
  if (!place.empty())
    readable.title += ": " + without_markup(place);
  add_place_and_time(readable.facts, survey, names);
  add_conditions(readable.facts, survey, names);
  for (const SpeciesSighting& sighting : survey.species)
    readable.species.push_back(readable_species(survey, sighting, names));
  for (const SurveyComplaint& complaint : complaints)
    readable.complaints.push_back({label_of(complaint.field), complaint.text});
  return readable;
}

std::string survey_text(const ReadableSurvey& survey)
{
  std::string text = in_one_line(survey.title).raw() + "\n\n" + text_lines(survey.facts) + "\n";
  text += "Species seen: " + std::to_string(survey.species.size()) + "\n";
  for (const auto& row : survey.species) {
    Glib::ustring line = "  " + std::to_string(row.id) + "  " + row.common_name;
    if (!row.scientific_name.empty())
      line += " (" + row.scientific_name + ")";
    text += in_one_line(line + ": " + row.abundance).raw() + "\n";
  }
  if (!survey.complaints.empty())
    text += "\nMissing or not right:\n" + text_lines(survey.complaints);
  return text;
}
