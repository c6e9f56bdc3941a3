#include "store/survey-fields.h"

#include "core/number.h"
#include "core/text.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace {

using Kind = FieldKind;
using TextMember = Glib::ustring Survey::*;
using NumberMember = int Survey::*;

// Returns "C" or "F". Treats all other units as Fahrenheit.
Glib::ustring temp_units_of(const Glib::ustring& text)
{
  return same_bytes(text, "C") ? "C" : "F";
}

} // namespace

const std::vector<SurveyField>& survey_fields()
{
  constexpr auto always = Required::always;
  constexpr auto unless_species_only = Required::unless_species_only;
  constexpr auto never = Required::never;
  // name, kind, value, digits, choices, summary, required, locked_when_uploaded
  static const std::vector<SurveyField> fields = {
      {"member_id", Kind::text, &Survey::member_id, 0, nullptr, "member_id", always},
      {"last_name", Kind::text, &Survey::last_name, 0, nullptr, "last_name", always},
      {"subregion", Kind::location, &Survey::subregion},
      {"survey_subtype", Kind::survey_type, &Survey::survey_subtype},
      {"year", Kind::year, &Survey::year, 4},
      {"month", Kind::choice_by_id, &Survey::month, 2},
      {"mday", Kind::choice_by_id, &Survey::mday, 2},
      {"dive_start", Kind::choice_by_id, &Survey::dive_start, 1, nullptr, "dive_start", always},
      {"zonecode", Kind::text, &Survey::zonecode},
      {"surface_temp", Kind::text, &Survey::surface_temp},
      {"bottom_temp", Kind::text, &Survey::bottom_temp},
      {"temp_units", Kind::temp_units, &Survey::temp_units},
      {"bottom_time", Kind::bottom_time, &Survey::bottom_time},
      {"visibility", Kind::choice_by_id, &Survey::visibility, 1, "visibility", "visibility",
       unless_species_only},
      {"avg_depth", Kind::choice_by_id, &Survey::avg_depth, 1, "depth", "avg_depth",
       unless_species_only},
      {"max_depth", Kind::choice_by_id, &Survey::max_depth, 1, "depth", "max_depth",
       unless_species_only},
      {"current", Kind::choice_by_id, &Survey::current, 1, "current", "current",
       unless_species_only},
      {"habitat", Kind::choice_by_id, &Survey::habitat, 1, nullptr, "habitat", unless_species_only},
      {"species_view", Kind::species_view, &Survey::species_view, 1, nullptr, nullptr, never,
       false},
  };
  return fields;
}

const SurveyField* find_survey_field(const Glib::ustring& name)
{
  const auto& fields = survey_fields();
  const auto found = std::find_if(fields.begin(), fields.end(),
                                  [&](const auto& field) { return same_bytes(name, field.name); });
  return found == fields.end() ? nullptr : &*found;
}

Glib::ustring padded(int number, int digits)
{
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%0*d", digits, number);
  return text.data();
}

Glib::ustring field_text(const SurveyField& field, const Survey& survey)
{
  if (const auto* const member = std::get_if<NumberMember>(&field.value))
    return padded(survey.*(*member), field.digits);
  const Glib::ustring& text = survey.*std::get<TextMember>(field.value);
  return field.kind == FieldKind::temp_units ? temp_units_of(text) : text;
}

void set_field_text(const SurveyField& field, const Glib::ustring& text, Survey& survey)
{
  if (const auto* const member = std::get_if<NumberMember>(&field.value))
    survey.*(*member) = to_int(text);
  else
    survey.*std::get<TextMember>(field.value) =
        field.kind == FieldKind::temp_units ? temp_units_of(text) : text;
}
