#include "store/show-survey.h"

#include "core/number.h"
#include "core/report.h"
#include "core/text.h"
#include "data/region-info.h"
#include "ui/confirm-panel.h"
#include "ui/drop-down-box.h"
#include "ui/listed-panel.h"
#include "ui/survey-panel1.h"
#include "ui/survey-panel2.h"
#include "ui/survey-window.h"

#include <cstdio>

namespace {

bool is_blank(const Glib::ustring& text)
{
  return text.raw().find_first_not_of(" \t\r\n") == std::string::npos;
}

// Sets the location of the survey. Throws the text of check_location(), or a text if the
// reference data lack the location.
void show_location(const Glib::ustring& code, SurveyWindow& window)
{
  if (debug_level > 0)
    printf("loading subregion %s\n", code.c_str());
  const auto& known = window.reference_data.region_info->subregion_regions;
  if (!code.empty() && known.count(code) == 0)
    throw "MAVO Survey is from a location that your data files do not know (" + code +
        "); please check for updates of the data files";
  check_location(code, !window.survey.abundances.empty());
  window.survey_panel1->setup_for_subregion(code);
}

// Shows the year. Stores a year that is missing from the list, for example because the clock is
// behind, in `unlisted_year`, so that the user is informed of its loss.
void show_year(const Glib::ustring& label, SurveyWindow& window)
{
  DropDownBox& year = *window.survey_panel1->year;
  year.set_label(label); // no item has the label "0000", so nothing is chosen
  const bool is_given = !same_bytes(label, "0000") && !is_blank(label);
  window.survey.unlisted_year = is_given && year.get_label().empty() ? label : "";
}

void show_bottom_time(const SurveyElement& element, SurveyWindow& window)
{
  window.survey_panel2->bottom_time->set_text(element.text); // clears the confirmation
  window.confirm_panel->confirm_bottom_time->set_active(element.confirmed);
}

void show_field(const SurveyElement& element, SurveyWindow& window)
{
  const SurveyField& field = *element.field;
  switch (field.kind) {
  case FieldKind::text:
    return window.fields.entry(field).set_text(element.text);
  case FieldKind::choice_by_id:
    return window.fields.box(field).set_id(to_int(element.text));
  case FieldKind::location:
    return show_location(element.text, window);
  case FieldKind::survey_type:
    return window.survey_panel1->set_survey_subtype_even_invisible(window.survey.subregion,
                                                                   to_int(element.text));
  case FieldKind::year:
    return show_year(element.text, window);
  case FieldKind::temp_units:
    return window.survey_panel2->set_temp_units_short(element.text);
  case FieldKind::bottom_time:
    return show_bottom_time(element, window);
  case FieldKind::species_view:
    return window.listed_panel->set_species_view_carefully(to_int(element.text));
  }
}

void show_species(const SpeciesSighting& sighting, SurveyWindow& window)
{
  if (debug_level > 2)
    printf("loading: species id %d abun %d\n", sighting.id, sighting.abun);
  window.survey.abundances[sighting.id] = sighting.abun;
}

} // namespace

void show_survey(const SurveyReading& reading, SurveyWindow& window)
{
  for (const SurveyElement& element : reading.elements) {
    if (element.emptied)
      window.fields.box(*element.emptied).set_label("");
    if (element.field)
      show_field(element, window);
    else
      show_species(element.species, window);
  }
  if (!reading.fault.empty())
    throw Glib::ustring(reading.fault);
}
