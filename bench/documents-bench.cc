// Measures writing the document of a survey. A save does this once, and the check for unsaved
// changes twice.
#include "core/version.h"
#include "data/region-info.h"
#include "store/survey-document.h"
#include "store/survey-xml-info.h"
#include "support/bench-window.h"
#include "ui/drop-down-box.h"
#include "ui/survey-panel1.h"
#include "ui/survey-window.h"

#include <libxml++/libxml++.h>

#include <cstdio>
#include <string>
#include <utility>
#include <vector>

namespace {

std::vector<SpeciesSighting> sightings(int count)
{
  std::vector<SpeciesSighting> species;
  for (int id = 1; id <= count; ++id)
    species.push_back({id, 2, 102});
  return species;
}

Survey filled_form()
{
  Survey form;
  form.member_id = "1234";
  form.last_name = "N\u00fa\u00f1ez & Sons";
  form.subregion = "PNW";
  form.zonecode = "21010001";
  return form;
}

// The contents of the document of that form, in its order, as prepared texts.
const std::pair<const char*, const char*> elements[] = {
    {"member_id", "1234"},    {"last_name", "N\u00fa\u00f1ez & Sons"},
    {"subregion", "PNW"},     {"survey_subtype", "-1"},
    {"year", "0000"},         {"month", "00"},
    {"mday", "00"},           {"dive_start", "-1"},
    {"zonecode", "21010001"}, {"surface_temp", ""},
    {"bottom_temp", ""},      {"temp_units", "F"},
    {"bottom_time", ""},      {"visibility", "-1"},
    {"avg_depth", "-1"},      {"max_depth", "-1"},
    {"current", "-1"},        {"habitat", "-1"},
    {"species_view", "-1"},
};

xmlpp::Element* add_survey(xmlpp::Document& document)
{
  static const SurveyXMLinfo format;
  xmlpp::Element* const root = document.create_root_node(format.root_tag, "", "");
  root->set_attribute("version", format.get_current_version_str());
  root->set_attribute("software_version", BuildInfo::version_str);
  root->set_attribute("software_build", BuildInfo::date_str);
  root->set_attribute("software_platform", "Linux");
  return root->add_child("survey");
}

// Returns the same document, made with the library alone.
Glib::ustring plain_document(const std::vector<SpeciesSighting>& species)
{
  xmlpp::Document document("1.0");
  xmlpp::Element* const survey = add_survey(document);
  for (const auto& [name, text] : elements) {
    xmlpp::Element* const element = survey->add_child(name);
    element->add_child_text(text);
    if (name == std::string("bottom_time"))
      element->set_attribute("confirmed", "0");
  }
  xmlpp::Element* const ids = survey->add_child("ids");
  char id[16];
  for (const auto& sighting : species) {
    xmlpp::Element* const element = ids->add_child("species");
    std::snprintf(id, sizeof id, "%04d", sighting.id);
    element->set_attribute("id", id);
    element->set_attribute("abun", std::to_string(sighting.abun));
    element->set_attribute("resp", std::to_string(sighting.resp));
  }
  return document.write_to_string_formatted("UTF-8");
}

// Returns a window with an unsaved survey of `count` species.
SurveyWindow& window_with_survey(int count)
{
  SurveyWindow& window = bench_window(bench_program(bench_data_sets().front()));
  SurveyPanel1& panel = *window.survey_panel1;
  panel.setup_for_subregion(window.my_app->region_info->subregion_regions.begin()->first);
  panel.survey_subtype->set_active(0);
  for (const auto& species : window.survey.region_fish->species)
    if (species.speciesid > 0 && static_cast<int>(window.survey.abundances.size()) < count)
      window.survey.abundances[species.speciesid] = 1;
  return window;
}

void measure_unsaved_changes(benchmark::State& state, SurveyWindow& window)
{
  bool needs_saving = false;
  for (auto _ : state)
    needs_saving = window.file_needs_saving();
  check_result(state, needs_saving, "the changes are not detected");
}

void measure_two_documents(benchmark::State& state, SurveyWindow& window)
{
  Glib::ustring error;
  bool generated = true;
  for (auto _ : state)
    for (const bool omit_member : {true, false})
      generated &= window.generate_xml_string(error, omit_member) == RET_SUCCESS;
  check_result(state, generated, "no document");
}

void register_unsaved_changes(int count)
{
  SurveyWindow* const window = &window_with_survey(count);
  bench_one("unsaved_changes", "ours", std::to_string(count),
            [=](benchmark::State& state) { measure_unsaved_changes(state, *window); });
  bench_one("unsaved_changes", "twice", std::to_string(count),
            [=](benchmark::State& state) { measure_two_documents(state, *window); });
}

} // namespace

void register_benchmarks()
{
  register_unsaved_changes(300);
  Survey survey = filled_form();
  for (const int count : {0, 100, 300}) {
    const auto species = sightings(count);
    survey.species = species;
    const auto measure = [=](benchmark::State& state, auto&& document) {
      Glib::ustring text;
      for (auto _ : state)
        text = document();
      check_result(state, text == survey_document(survey, "Linux"), "another document");
    };
    bench_one("document", "ours", std::to_string(count), [=](benchmark::State& state) {
      measure(state, [&] { return survey_document(survey, "Linux"); });
    });
    bench_one("document", "tree", std::to_string(count), [=](benchmark::State& state) {
      measure(state, [&] { return plain_document(species); });
    });
  }
}
