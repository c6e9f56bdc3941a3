// The checks of the Confirmation page.
#include "core/displayed-text.h"
#include "core/markup.h"
#include "core/my-app.h"
#include "core/number.h"
#include "core/text.h"
#include "core/widget-helpers.h"
#include "data/data-params.h"
#include "data/region.h"
#include "data/species-views.h"
#include "store/survey-checks.h"
#include "store/survey-fields.h"
#include "ui/confirm-panel.h"
#include "ui/survey-panel1.h"
#include "ui/survey-panel2.h"
#include "ui/survey-window.h"
#include "ui/tooltips.h"

#include <ctime>
#include <string>

namespace {

// Returns whether a habitat is only the prompt at the start of the list.
bool is_prompt(const Glib::ustring& habitat)
{
  return habitat.raw().rfind("(please", 0) == 0;
}

} // namespace

// Runs all checks, even after a problem, so that the page shows all problems at once.
void ConfirmPanel::refresh()
{
  bool ok = true;
  check_plain_fields(ok);
  check_survey_type(ok);
  check_survey_date(ok);
  check_zone_code(ok);
  check_temperatures(ok);
  check_bottom_time(ok);
  check_order_of_depths(ok);
  check_species(ok);
  show_verdict(ok);
  show_summaries();
}

bool ConfirmPanel::is_marked(const Gtk::Label* label) const
{
  return begins_with(label->get_label(), red_begin);
}

bool ConfirmPanel::set_simple_field(Gtk::Label* name_label, Gtk::Label* value_label,
                                    const Glib::ustring& value, bool& ok, int required)
{
  const Region* const type = window->survey.survey_subtype;
  const bool is_species_only = type && !type->hasabundance;
  const bool is_required =
      required == static_cast<int>(Required::always) ||
      (required == static_cast<int>(Required::unless_species_only) && !is_species_only);
  if (is_required && value.empty()) {
    ok = false;
    set_redbold(name_label);
    value_label->set_markup(redbold("Required"));
    return false;
  }
  clear_redbold(name_label);
  value_label->set_markup(displayed_markup(value));
  return true;
}

Glib::ustring ConfirmPanel::redbold(const Glib::ustring& text) const
{
  return red_begin + text + red_end;
}

void ConfirmPanel::set_redbold(Gtk::Label* label) const
{
  clear_redbold(label);
  label->set_label(redbold(label->get_label()));
}

void ConfirmPanel::clear_redbold(Gtk::Label* label) const
{
  const std::string text = label->get_label();
  const std::size_t marks = red_begin.bytes() + red_end.bytes();
  if (is_marked(label) && text.size() >= marks)
    label->set_label(text.substr(red_begin.bytes(), text.size() - marks));
}

void ConfirmPanel::show_checked(Gtk::Label* name_label, Gtk::Label* value_label,
                                const Glib::ustring& text, bool good, bool& ok)
{
  const Glib::ustring readable = displayed_markup(text);
  if (good) {
    clear_redbold(name_label);
    value_label->set_label(readable);
  } else {
    ok = false;
    set_redbold(name_label);
    value_label->set_label(redbold(readable));
  }
}

void ConfirmPanel::check_plain_fields(bool& ok)
{
  const FieldWidgets& fields = window->fields;
  for (const SurveyField& field : survey_fields()) {
    if (field.summary)
      set_simple_field(&fields.summary_name(field), &fields.summary_value(field),
                       chosen_text(field), ok, static_cast<int>(field.required));
  }
}

Glib::ustring ConfirmPanel::chosen_text(const SurveyField& field) const
{
  const Glib::ustring text = window->fields.shown_text(field);
  const bool is_habitat = &window->fields.input(field) == window->survey_panel2->habitat;
  return is_habitat && is_prompt(text) ? Glib::ustring() : text;
}

void ConfirmPanel::check_survey_type(bool& ok)
{
  const Glib::ustring type = window->survey_panel1->survey_subtype->get_label();
  if (contains(type, NO_LONGER_AVAILABLE)) {
    show_checked(conf_label_survey_type, conf_survey_type, type, false, ok);
  } else {
    conf_survey_type->set_text(displayed_text(type)); // turns the label's markup off
    clear_redbold(conf_label_survey_type);
  }
}

void ConfirmPanel::check_survey_date(bool& ok)
{
  const auto& when = *window->survey_panel1;
  const CheckedText date = check_date(when.year->get_id(), when.month->get_id(),
                                      when.mday->get_id(), std::time(nullptr));
  show_checked(conf_label_survey_date, conf_survey_date, date.text, date.good, ok);
}

void ConfirmPanel::check_zone_code(bool& ok)
{
  const Glib::ustring name = window->survey_panel1->zone_name->get_text();
  const CheckedText zone = check_zone(window->survey_panel1->get_zonecode(), name);
  show_checked(conf_label_zone_code, conf_zone_code, zone.text, zone.good, ok);
  if (!zone.good) // this value has always been marked twice
    conf_zone_code->set_label(redbold(conf_zone_code->get_label()));
  const Glib::ustring markup = escape_ampersands(name);
  conf_zone_name->set_label(is_label_markup(markup) ? displayed_markup(markup)
                                                    : escape_markup(displayed_text(name)));
}

void ConfirmPanel::check_temperatures(bool& ok)
{
  const auto& conditions = *window->survey_panel2;
  show_temperature(conf_label_surface_temp, conf_surface_temp, *conditions.surface_temp, ok);
  show_temperature(conf_label_bottom_temp, conf_bottom_temp, *conditions.bottom_temp, ok);
}

void ConfirmPanel::show_temperature(Gtk::Label* name_label, Gtk::Label* value_label,
                                    const Gtk::Entry& entry, bool& ok)
{
  const Glib::ustring unit = window->survey_panel2->get_temp_units_short();
  const Glib::ustring key = unit.lowercase();
  const CheckedText checked = check_temperature(trim_ws(entry.get_text()), unit,
                                                limit("temp_min_" + key), limit("temp_max_" + key));
  show_checked(name_label, value_label, checked.text, checked.good, ok);
}

// Returns 0 if the data lack the limit.
int ConfirmPanel::limit(const Glib::ustring& parameter) const
{
  return window->reference_data.data_params->params[parameter];
}

void ConfirmPanel::check_bottom_time(bool& ok)
{
  const Glib::ustring typed = trim_ws(window->survey_panel2->bottom_time->get_text());
  if (typed.empty()) {
    show_checked(conf_label_bottom_time, conf_bottom_time, "Required", false, ok);
    confirm_bottom_time->hide();
    return;
  }
  const bool unusual = is_unusual_bottom_time(to_int(typed), limit("bottom_time_confirm_under"),
                                              limit("bottom_time_confirm_over"));
  const bool good = !unusual || confirm_bottom_time->get_active();
  show_checked(conf_label_bottom_time, conf_bottom_time, typed + " minutes", good, ok);
  confirm_bottom_time->set_label(good ? "Unusual bottom time confirmed"
                                      : "Confirm unusual bottom time");
  show_or_hide(confirm_bottom_time, unusual);
}

void ConfirmPanel::check_order_of_depths(bool& ok)
{
  const auto& conditions = *window->survey_panel2;
  const bool is_missing = is_marked(conf_label_max_depth);
  if (is_missing || conditions.max_depth->get_id() >= conditions.avg_depth->get_id())
    return;
  ok = false;
  set_redbold(conf_label_max_depth);
  conf_max_depth->set_markup(displayed_markup(conditions.max_depth->get_label()) + " " +
                             redbold(" Must be no less than Average Depth"));
}

void ConfirmPanel::check_species(bool& ok)
{
  const SurveyData& survey = window->survey;
  const auto& view = window->reference_data.species_views->species_set(survey.species_view_id);
  num_listed = 0;
  num_unlisted = 0;
  for (const auto& [id, abundance] : survey.abundances)
    if (abundance != 0)
      ++(view.count(id) != 0 ? num_listed : num_unlisted);
  const int total = num_listed + num_unlisted;
  show_checked(conf_label_total_species, conf_total_species, std::to_string(total), total != 0, ok);
}

void ConfirmPanel::show_verdict(bool ok)
{
  SurveyData& survey = window->survey;
  survey.survey_complete = ok;
  confirm_instructions->set_label(
      ok ? Glib::ustring("Please check that all information is correct.")
         : "Please check that all information is correct; items " + redbold("marked in red") +
               " need to be fixed.");
  confirm_verdict->set_label(verdict_on(marked_entries().size()));
  const bool may_go = ok && !survey.is_uploaded;
  window->upload_button->set_sensitive(may_go);
  window->ready_button->set_sensitive(may_go);
  show_current_tooltips(*window);
}
