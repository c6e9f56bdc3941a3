#include "ui/survey-panel2.h"

#include "core/displayed-text.h"
#include "core/markup.h"
#include "core/report.h"
#include "core/text.h"
#include "core/widget-helpers.h"
#include "data/data-defs.h"
#include "data/habitat-info.h"
#include "data/region.h"
#include "ui/confirm-panel.h"
#include "ui/survey-window.h"

#include <cstdio>

namespace {

bool shows_snorkel(const DropDownBox* depth)
{
  return same_bytes(depth->get_label(), MAGIC_SNORKEL_DEPTH);
}

// Limits in characters. A name has a few words, a description some sentences.
constexpr std::size_t longest_name = 100;
constexpr std::size_t longest_description = 1000;
constexpr std::size_t longest_list = 20000; // bytes of markup

// Returns one habitat as markup. The data can contain tags. A text with invalid markup is shown
// as plain text, because otherwise the label would be empty.
Glib::ustring habitat_markup(const Glib::ustring& name, const Glib::ustring& description)
{
  const Glib::ustring entry = "<b>" + name + "</b> " + description;
  if (entry.bytes() <= longest_description && is_label_markup(entry))
    return displayed_markup(entry, longest_description); // tags may extend over both texts
  return "<b>" + displayed_markup(name, longest_name) + "</b> " +
         displayed_markup(description, longest_description);
}

// Returns all habitats of a region up to the limit, with one line for each. Omits unused codes.
Glib::ustring habitats_markup(const HabitatInfo& info, const std::vector<int>& ids)
{
  Glib::ustring text;
  for (const int id : ids) {
    if (id < 0 || static_cast<std::size_t>(id) >= info.names.size())
      continue;
    if (!text.empty())
      text += "\n";
    if (text.bytes() > longest_list)
      return text + "\u2026";
    const auto habitat = static_cast<std::size_t>(id);
    text += habitat_markup(info.names[habitat], info.descriptions[habitat]);
  }
  return text;
}

} // namespace

SurveyPanel2::SurveyPanel2(BaseObjectType* cobject, const Glib::RefPtr<Gtk::Builder>& /*builder*/)
    : Gtk::Grid(cobject)
{
}

void SurveyPanel2::ctor_continued(const Glib::RefPtr<Gtk::Builder>& builder,
                                  SurveyWindow* the_window)
{
  window = the_window;
  my_app = window->my_app;
  find_widgets(builder);
  fill_boxes();
  habitat_descr->set_markup(
      "<i>Please select a survey location on the Survey Info Part 1 tab.</i>");

  avg_depth->signal_changed().connect(sigc::mem_fun(*this, &SurveyPanel2::on_avg_depth_changed));
  max_depth->signal_changed().connect(sigc::mem_fun(*this, &SurveyPanel2::on_max_depth_changed));
  bottom_time->signal_changed().connect(
      sigc::mem_fun(*this, &SurveyPanel2::on_bottom_time_changed));
}

void SurveyPanel2::find_widgets(const Glib::RefPtr<Gtk::Builder>& builder)
{
  builder->get_widget("sp2_instructions", sp2_instructions);
  builder->get_widget("surface_temp", surface_temp);
  builder->get_widget("optional1", optional1);
  builder->get_widget("bottom_temp", bottom_temp);
  builder->get_widget("optional2", optional2);
  builder->get_widget_derived("temp_units", temp_units);
  builder->get_widget("bottom_time", bottom_time);
  builder->get_widget_derived("visibility", visibility);
  builder->get_widget("label_avg_depth", label_avg_depth);
  builder->get_widget_derived("avg_depth", avg_depth);
  builder->get_widget("label_max_depth", label_max_depth);
  builder->get_widget_derived("max_depth", max_depth);
  builder->get_widget_derived("current", current);
  builder->get_widget_derived("habitat", habitat);
  builder->get_widget("habitat_descr", habitat_descr);
  break_anywhere(*habitat_descr);
}

void SurveyPanel2::fill_boxes()
{
  temp_units->init({{0, "Fahrenheit"}, {1, "Celsius"}}, -1);
  temp_units->set_active(0);

  window->fields.fill_boxes(*window->reference_data.data_defs);
  habitat->opens_beside = true; // does not cover the descriptions below
  habitat->set_active(0);       // has no effect unless the definition file has habitats
}

RetCode SurveyPanel2::setup_for_subregion(const Glib::ustring& /*code*/)
{
  const Glib::ustring& region = window->survey.region;
  if (region.empty())
    return RET_INTERNAL_ERROR;

  HabitatInfo& info = *window->reference_data.habitat_info;
  const auto& offered = info.region_habitats[region];
  habitat->init(offered.values, offered.labels, -1, 0);
  habitat_descr->set_markup(habitats_markup(info, info.region_habitat_ids[region]));
  return RET_SUCCESS;
}

RetCode SurveyPanel2::setup_for_survey_subtype()
{
  const bool species_only = !window->survey.survey_subtype->hasabundance;
  sp2_instructions->set_label(
      species_only ? "Please enter information about your survey conditions; since this is a "
                     "species-only survey, all fields are optional except bottom time:"
                   : "Please enter information about your survey conditions:");
  show_or_hide(optional1, !species_only); // superfluous if all fields are optional
  show_or_hide(optional2, !species_only);
  return RET_SUCCESS;
}

void SurveyPanel2::set_temp_units_short(const Glib::ustring& units)
{
  temp_units->set_label(same_bytes(units, "C") ? "Celsius" : "Fahrenheit");
}

Glib::ustring SurveyPanel2::get_temp_units_short() const
{
  return temp_units->get_label().substr(0, 1);
}

void SurveyPanel2::disable_inputs()
{
  window->fields.lock(*this);
  for (auto* label : {optional1, optional2, label_avg_depth, label_max_depth})
    label->set_sensitive(false);
  sp2_instructions->set_sensitive(true); // remains readable
  habitat_descr->set_sensitive(true);
}

void SurveyPanel2::on_bottom_time_changed() const
{
  window->confirm_panel->confirm_bottom_time->set_active(false);
}

// The two boxes are linked as long as the maximum is disabled, and only the average can unlink
// them. Both handlers do nothing if the boxes have the same choice, so they do not call each other
// endlessly.

void SurveyPanel2::on_avg_depth_changed() const
{
  if (debug_level >= 2)
    std::printf("avg_depth: %s\n", avg_depth->get_label().c_str());

  if (!shows_snorkel(avg_depth)) {
    if (!max_depth->get_sensitive()) {
      max_depth->set_label("");
      max_depth->set_sensitive(true);
    }
    return;
  }
  if (shows_snorkel(max_depth))
    return;
  if (debug_level >= 2)
    std::printf("\tmax_depth: %s; setting to %s\n", max_depth->get_label().c_str(),
                MAGIC_SNORKEL_DEPTH.c_str());
  max_depth->set_label(MAGIC_SNORKEL_DEPTH);
  max_depth->set_sensitive(false);
}

void SurveyPanel2::on_max_depth_changed() const
{
  if (debug_level >= 2)
    std::printf("max_depth: %s\n", max_depth->get_label().c_str());

  if (!shows_snorkel(max_depth) || shows_snorkel(avg_depth))
    return;
  if (debug_level >= 2)
    std::printf("\tavg_depth: %s; setting to %s\n", avg_depth->get_label().c_str(),
                MAGIC_SNORKEL_DEPTH.c_str());
  avg_depth->set_label(MAGIC_SNORKEL_DEPTH);
  max_depth->set_sensitive(false);
}
