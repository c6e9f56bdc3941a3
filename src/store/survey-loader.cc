#include "store/survey-loader.h"

#include "core/my-app.h"
#include "core/number.h"
#include "core/report.h"
#include "data/region-info.h"
#include "store/survey-reader.h"
#include "ui/confirm-panel.h"
#include "ui/listed-panel.h"
#include "ui/member-panel.h"
#include "ui/survey-panel1.h"
#include "ui/survey-panel2.h"
#include "ui/survey-window.h"

#include <cstdio>

namespace {

bool is_blank(const Glib::ustring& text)
{
  return text.raw().find_first_not_of(" \t\r\n") == std::string::npos;
}

} // namespace

void SurveyLoader::load(const xmlpp::Node* survey_element)
{
  for (const xmlpp::Node* node = survey_element->get_first_child(); node;
       node = node->get_next_sibling())
    if (!is_white_space(node))
      load_element(*node);
}

void SurveyLoader::load_element(const xmlpp::Node& element)
{
  const Glib::ustring name = element.get_name();
  const Glib::ustring content = get_content(&element);
  if (load_text(name, content) || load_choice(name, content))
    return;
  if (name.raw() == "subregion")
    load_subregion(content);
  else if (name.raw() == "survey_subtype")
    window.survey_panel1->set_survey_subtype_even_invisible(subregion, to_int(content));
  else if (name.raw() == "year")
    load_year(content);
  else if (name.raw() == "temp_units")
    window.survey_panel2->set_temp_units_short(content);
  else if (name.raw() == "bottom_time")
    load_bottom_time(element);
  else if (name.raw() == "depth")
    load_single_depth(to_int(content));
  else if (name.raw() == "species_view")
    window.listed_panel->set_species_view_carefully(to_int(content));
  else if (name.raw() == "ids")
    read_sightings(element, window.survey.abundances);
  else
    throw "MAVO Survey has unknown tag '" + name + "'";
}

bool SurveyLoader::load_text(const Glib::ustring& name, const Glib::ustring& content)
{
  const struct {
    const char* name;
    Gtk::Entry* entry;
  } entries[] = {
      {"member_id", window.member_panel->member_id},
      {"last_name", window.member_panel->last_name},
      {"zonecode", window.survey_panel1->zonecode},
      {"surface_temp", window.survey_panel2->surface_temp},
      {"bottom_temp", window.survey_panel2->bottom_temp},
  };
  for (const auto& row : entries) {
    if (name.raw() == row.name) {
      row.entry->set_text(content);
      return true;
    }
  }
  return false;
}

bool SurveyLoader::load_choice(const Glib::ustring& name, const Glib::ustring& content)
{
  const SurveyPanel1& when = *window.survey_panel1;
  const SurveyPanel2& conditions = *window.survey_panel2;
  const struct {
    const char* name;
    DropDownBox* box;
  } boxes[] = {
      {"month", when.month},
      {"mday", when.mday},
      {"dive_start", when.dive_start},
      {"visibility", conditions.visibility},
      {"avg_depth", conditions.avg_depth},
      {"max_depth", conditions.max_depth},
      {"current", conditions.current},
      {"habitat", conditions.habitat},
  };
  for (const auto& row : boxes) {
    if (name.raw() == row.name) {
      row.box->set_id(to_int(content));
      return true;
    }
  }
  return false;
}

void SurveyLoader::load_subregion(const Glib::ustring& content)
{
  if (debug_level > 0)
    printf("loading subregion %s\n", content.c_str());
  if (content.empty())
    throw "MAVO Survey names no location";
  if (window.reference_data.region_info->subregion_regions.count(content) == 0)
    throw "MAVO Survey is from a location that your data files do not know (" + content +
        "); please check for updates of the data files";
  if (!window.survey.abundances.empty()) // a change of place forgets the species
    throw "MAVO Survey has species in front of its location";
  subregion = content;
  window.survey_panel1->setup_for_subregion(content);
  single_depth_is_maximum = content.raw() == "PNW" || content.raw() == "CAL";
}

// A year that the list lacks, as with a clock that is behind, is kept aside: its
// loss is not to go unnoticed.
void SurveyLoader::load_year(const Glib::ustring& content)
{
  DropDownBox& year = *window.survey_panel1->year;
  year.set_label(content); // "0000" is no label: nothing is chosen
  const bool is_given = content.raw() != "0000" && !is_blank(content);
  window.survey.unlisted_year = is_given && year.get_label().empty() ? content : "";
}

void SurveyLoader::load_bottom_time(const xmlpp::Node& element)
{
  window.survey_panel2->bottom_time->set_text(get_content(&element)); // clears the confirmation
  window.confirm_panel->confirm_bottom_time->set_active(get_numeric_attr(&element, "confirmed") !=
                                                        0);
}

// Older surveys have one depth, which is the maximum in some places and the
// average elsewhere. The other one is cleared.
void SurveyLoader::load_single_depth(int depth_id)
{
  DropDownBox* const average = window.survey_panel2->avg_depth;
  DropDownBox* const maximum = window.survey_panel2->max_depth;
  (single_depth_is_maximum ? average : maximum)->set_label("");
  (single_depth_is_maximum ? maximum : average)->set_id(depth_id);
}
