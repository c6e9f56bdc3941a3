#include "ui/survey-panel1.h"

#include "core/message-dialog.h"
#include "core/report.h"
#include "core/text.h"
#include "core/widget-helpers.h"
#include "data/data-defs.h"
#include "data/region-info.h"
#include "store/survey-file-name.h"
#include "ui/date-boxes.h"
#include "ui/listed-panel.h"
#include "ui/survey-panel2.h"
#include "ui/survey-window.h"
#include "ui/tooltips.h"
#include "ui/trigger-guard.h"
#include "ui/unlisted-panel.h"

#include <algorithm>
#include <cstdio>
#include <initializer_list>
#include <string>

namespace {

constexpr unsigned int dive_start_first = 6; // the list begins in the morning
constexpr int dive_start_columns = 6;        // hours in a row: a quarter of a day

} // namespace

SurveyPanel1::SurveyPanel1(BaseObjectType* cobject, const Glib::RefPtr<Gtk::Builder>& /*builder*/)
    : Gtk::Grid(cobject)
{
}

void SurveyPanel1::ctor_continued(const Glib::RefPtr<Gtk::Builder>& builder,
                                  SurveyWindow* the_window)
{
  window = the_window;
  my_app = window->my_app;
  find_widgets(builder);
  fill_boxes();

  for (auto* widget : std::initializer_list<Gtk::Widget*>{survey_subtype, zonecode, zone_search})
    widget->set_sensitive(false);
  zone_name->set_text("");
  zone_name_status->set_text("");
  no_geog_matches->hide();

  prepare_zone_tree();
  place_zones();
  connect_signals();
  triggers_suppressed = false;
}

void SurveyPanel1::find_widgets(const Glib::RefPtr<Gtk::Builder>& builder)
{
  builder->get_widget_derived("subregion", subregion);
  builder->get_widget_derived("survey_subtype", survey_subtype);
  builder->get_widget_derived("month", month);
  builder->get_widget_derived("mday", mday);
  builder->get_widget_derived("year", year);
  builder->get_widget_derived("dive_start", dive_start);
  builder->get_widget("zonecode", zonecode);
  builder->get_widget("zone_name_status", zone_name_status);
  builder->get_widget("zone_name", zone_name);
  break_anywhere(*zone_name);
  builder->get_widget("zone_search", zone_search);
  builder->get_widget("no_geog_matches", no_geog_matches);
  builder->get_widget("geog_tree", geog_tree);
  builder->get_widget("zones", zone_list);
}

void SurveyPanel1::fill_boxes()
{
  const auto& hours = window->reference_data.data_defs->defs["divestart"];
  dive_start->set_wrap_width(dive_start_columns);
  dive_start->init(hours.values, hours.labels, -1, dive_start_first);
  fill_month_box(*month);
  fill_mday_box(*mday);
  fill_year_box(*year);
  const auto& places = window->reference_data.region_info->subregion_list;
  subregion->init(places.values, places.labels, -1, 0);
}

void SurveyPanel1::connect_signals()
{
  signal_style_updated().connect(sigc::mem_fun(*this, &SurveyPanel1::place_zones));
  for (auto* box : {month, mday, year, dive_start})
    box->signal_changed().connect(sigc::mem_fun(*window, &SurveyWindow::set_title_string));
  subregion->signal_changed().connect(sigc::mem_fun(*this, &SurveyPanel1::on_subregion_changed));
  survey_subtype->signal_changed().connect(
      sigc::mem_fun(*this, &SurveyPanel1::on_survey_subtype_changed));
  zonecode->signal_changed().connect(sigc::mem_fun(*this, &SurveyPanel1::on_zonecode_changed));
  zone_search->signal_changed().connect(
      sigc::mem_fun(*this, &SurveyPanel1::on_zone_search_changed));
}

void SurveyPanel1::place_zones()
{
  constexpr int width_in_characters = 82; // the width of form and list side by side
  constexpr int usual_width = 900;        // pixels
  const auto context = get_pango_context();
  const auto metrics = context->get_metrics(context->get_font_description());
  const bool is_beside =
      metrics.get_approximate_char_width() * width_in_characters <= usual_width * Pango::SCALE;
  child_property_left_attach(*zone_list) = is_beside ? 2 : 0;
  child_property_top_attach(*zone_list) = is_beside ? 3 : 10;
  child_property_width(*zone_list) = is_beside ? 1 : 3;
  child_property_height(*zone_list) = is_beside ? 7 : 1;
}

void SurveyPanel1::disable_inputs()
{
  window->fields.lock(*this);
  for (auto* label : {zone_name_status, zone_name, no_geog_matches})
    label->set_sensitive(false);
  zone_search->set_sensitive(true); // it is disabled until the survey has a location
  geog_tree->set_sensitive(true);
}

void SurveyPanel1::focus_on(Gtk::Widget* widget)
{
  window->notebook->set_current_page(page);
  widget->grab_focus();
}

Glib::ustring SurveyPanel1::get_zonecode() const
{
  return trim_ws(zonecode->get_text());
}

Glib::ustring SurveyPanel1::get_dive_start_string() const
{
  return dive_start_text(dive_start->get_id());
}

bool SurveyPanel1::suppressed(const char* handler) const
{
  if (triggers_suppressed && debug_level >= 1)
    std::printf("suppressed: %s\n", handler);
  return triggers_suppressed;
}

// --- subregion ---

void SurveyPanel1::on_subregion_changed()
{
  if (suppressed("on_subregion_changed"))
    return;
  if (subregion->get_active_row_number() < 0)
    return; // only the program clears the box, for a location that it does not offer

  const auto& codes = window->reference_data.region_info->subregion_codes;
  const auto chosen = codes.find(subregion->get_label());
  if (chosen == codes.end()) {
    if (debug_level >= -1)
      std::printf("Subregion \"%s\" is not in the data\n", subregion->get_label().c_str());
    show_subregion(window->survey.subregion);
    return;
  }
  if (same_bytes(chosen->second, window->survey.subregion))
    return;
  const int marked = count_marked_species();
  if (marked == 0 || may_clear_species(marked))
    setup_for_subregion(chosen->second);
  else
    show_subregion(window->survey.subregion);
}

int SurveyPanel1::count_marked_species() const
{
  const auto& abundances = window->survey.abundances;
  return static_cast<int>(std::count_if(abundances.begin(), abundances.end(),
                                        [](const auto& entry) { return entry.second != 0; }));
}

bool SurveyPanel1::may_clear_species(int count)
{
  Message question;
  question.title = "Clear selected species?";
  question.text = std::to_string(count) +
                  " species you have selected will be lost if you change the survey region!\n"
                  "Do you want to change the survey region and start over selecting species?\n"
                  "Click Yes to proceed and clear the selected species,\n"
                  "or Cancel to leave the survey region as it was for now.";
  question.type = Gtk::MESSAGE_WARNING;
  question.buttons = {{"gtk-yes", Gtk::RESPONSE_ACCEPT}, {"gtk-cancel", Gtk::RESPONSE_CANCEL}};
  return run_message(question) == Gtk::RESPONSE_ACCEPT;
}

void SurveyPanel1::show_subregion(const Glib::ustring& code)
{
  const auto& names = window->reference_data.region_info->subregion_names;
  const auto found = names.find(code);
  if (found == names.end())
    subregion->unset_active();
  else
    subregion->set_label(found->second);
}

void SurveyPanel1::setup_for_subregion(const Glib::ustring& code)
{
  if (suppressed("setup_for_subregion"))
    return;
  {
    const TriggerGuard quiet(triggers_suppressed, "setup_for_subregion");
    window->save_button->set_sensitive(true);
    show_subregion(code);
    if (!same_bytes(code, window->survey.subregion))
      move_survey_to_subregion(code);

    const auto& types = window->reference_data.region_info->survey_types[code];
    survey_subtype->init(types.values, types.labels, -1, 0);
    window->survey_panel2->setup_for_subregion(code);
    window->listed_panel->setup_for_subregion(code);
    window->unlisted_panel->setup_for_subregion(code);
    rebuild_zone_tree();
    for (auto* widget : std::initializer_list<Gtk::Widget*>{survey_subtype, zonecode, zone_search})
      widget->set_sensitive(true);
    show_current_tooltips(*window);
  }
  on_survey_subtype_changed();
}

void SurveyPanel1::move_survey_to_subregion(const Glib::ustring& code)
{
  RegionInfo& info = *window->reference_data.region_info;
  if (info.subregion_regions.count(code) == 0 && debug_level >= -1)
    std::printf("Subregion %s is not in the data\n", code.c_str());

  // A subregion that the data lack gets empty tables, so that the user can still view a survey
  // from there.
  SurveyData& survey = window->survey;
  survey.abundances.clear();
  survey.region = info.subregion_regions[code];
  survey.subregion = code;
  survey.region_fish = &info.region_fish[survey.region];
  survey.subregion_info = &info.subregions[code];
  survey.survey_subtype = nullptr;
  survey.filename.clear(); // with another location, it is another survey
  survey.show_fish = false;
  survey.show_inverts = false;
  survey.show_common_name = false;
  survey.show_scientific_name = false;
  survey.show_spanish_name = false;
  zones = ZoneTree(survey.region_fish->geog_ids, survey.region_fish->geog_names, survey.region,
                   survey.subregion);
  zonecode->set_text("");
}

// --- survey type ---

void SurveyPanel1::on_survey_subtype_changed()
{
  if (suppressed("on_survey_subtype_changed"))
    return;
  const int id = survey_subtype->get_id();
  SurveyData& survey = window->survey;
  auto& types = window->reference_data.region_info->regions;
  if (id == -1) {
    if (debug_level >= 1)
      std::puts("survey subtype cleared");
    survey.survey_subtype = nullptr;
    return;
  }
  if (debug_level >= 1)
    std::printf("survey subtype changed to %d\n", id);
  if (id < 0 || static_cast<std::size_t>(id) >= types.size()) {
    if (debug_level >= -1)
      std::printf("Survey type %d is not in the data\n", id);
    survey.survey_subtype = nullptr;
    return;
  }
  survey.survey_subtype = &types[static_cast<std::size_t>(id)];
  if (survey.survey_subtype->surveytypeid != id)
    std::printf("Uh oh, survey_subtype_id confusion: %d vs. %d\n",
                survey.survey_subtype->surveytypeid, id);
  if (debug_level >= 1)
    std::printf("survey subtype set to %s\n", survey.survey_subtype->surveytypename.c_str());

  copy_type_properties(id);
  window->survey_panel2->setup_for_survey_subtype();
  show_species_of_type();
}

// Copies the properties of the new type to the survey, and its abundance menu to the window.
void SurveyPanel1::copy_type_properties(int id)
{
  SurveyData& survey = window->survey;
  survey.abundance_choices = window->reference_data.abundance_choices->find_subtype(id);
  const bool has_choices = survey.abundance_choices && !survey.abundance_choices->choices.empty();
  if (!has_choices && debug_level >= -1)
    std::printf("Survey type %d has no abundance choices\n", id);
  survey.show_fish = survey.survey_subtype->hasfish;
  survey.show_inverts = survey.survey_subtype->hasinverts;
  survey.show_common_name = false;
  survey.show_scientific_name = false;
  survey.show_spanish_name = false;

  const auto index = static_cast<std::size_t>(id);
  const auto& menus = window->abundance_menus;
  window->current_abundance_menu = index < menus.size() ? menus[index] : nullptr;
}

void SurveyPanel1::show_species_of_type()
{
  const SurveyData& survey = window->survey;
  window->listed_panel->setup_instructions(*survey.region_fish);
  window->species_columns.choices =
      survey.abundance_choices ? &survey.abundance_choices->choices : nullptr;
  window->listed_panel->update_for_view();
  window->unlisted_panel->setup_for_survey_subtype();
}

void SurveyPanel1::set_survey_subtype_even_invisible(const Glib::ustring& subregion_code, int id)
{
  if (subregion_code.empty())
    fatal("Can't load survey - empty subregion!");

  const auto& hidden = window->reference_data.region_info->hidden_survey_types;
  const auto hidden_here = hidden.find(subregion_code);
  if (hidden_here != hidden.end()) {
    const auto type = hidden_here->second.find(id);
    if (type != hidden_here->second.end()) {
      if (debug_level >= 1)
        std::printf("Hey, invisible subtype %d %s\n", id, type->second.c_str());
      survey_subtype->add_item(id, type->second + " - " + NO_LONGER_AVAILABLE);
    }
  }
  survey_subtype->set_id(id);
}
