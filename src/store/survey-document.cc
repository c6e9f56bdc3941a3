#include "store/survey-document.h"

#include "core/c-resource.h"
#include "core/version.h"
#include "data/region-fish-info.h"
#include "data/region.h"
#include "store/survey-xml-info.h"

#include <libxml++/document.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <string>

namespace {

constexpr int presence_only_invertebrate = 2; // of RegionFishInfo::Species::invertebratetype

// The class that stands in the document: a survey type without abundances
// knows only that a species was there. A survey whose type has been cleared
// keeps what was noted.
int written_abundance(int abundance, const Region* survey_subtype)
{
  return abundance > 1 && survey_subtype && !survey_subtype->hasabundance ? 1 : abundance;
}

// The server's number of the class, -1 if the reference data have none. A
// species that these data do not know, of a survey made with newer ones, is
// kept with the survey type's number.
int response_id(int species_id, int abundance, const SurveyData& survey,
                const AbundanceChoices& choices)
{
  if (!survey.region_fish || species_id < 1)
    return -1;
  const RegionFishInfo::Species* const species = survey.region_fish->find_species(species_id);
  const AbundanceChoices::SurveySubtypeChoiceInfo* const list =
      species && species->invertebratetype == presence_only_invertebrate
          ? choices.find_subtype(AbundanceChoices::presence_subtype)
          : survey.abundance_choices;
  if (!list || abundance < 0 || static_cast<std::size_t>(abundance) >= list->choices.size())
    return -1;
  return list->choices[static_cast<std::size_t>(abundance)].responseid;
}

bool is_xml_char(gunichar c)
{
  return c == '\t' || c == '\n' || c == '\r' || (c >= 0x20 && c <= 0xD7FF) ||
         (c >= 0xE000 && c <= 0xFFFD) || (c >= 0x10000 && c <= 0x10FFFF);
}

bool is_printable_ascii(char c)
{
  return c >= ' ' && c <= '~';
}

Glib::ustring xml_text(const Glib::ustring& text)
{
  if (std::all_of(text.raw().begin(), text.raw().end(), is_printable_ascii))
    return text; // as most are, and numbers always
  Glib::ustring kept;
  for (const gunichar c : text.make_valid())
    if (is_xml_char(c))
      kept += c;
  return kept;
}

Glib::ustring padded(int number, int width)
{
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%0*d", width, number);
  return text.data();
}

xmlpp::Element* add_text(xmlpp::Element* parent, const Glib::ustring& name,
                         const Glib::ustring& text)
{
  xmlpp::Element* const element = parent->add_child(name);
  element->add_child_text(xml_text(text));
  return element;
}

void add_id(xmlpp::Element* parent, const Glib::ustring& name, int id)
{
  add_text(parent, name, std::to_string(id));
}

xmlpp::Element* add_root(xmlpp::Document& document, const Glib::ustring& platform)
{
  const SurveyXMLinfo format;
  xmlpp::Element* const root = document.create_root_node(format.root_tag, "", "");
  root->set_attribute("version", format.get_current_version_str());
  root->set_attribute("software_version", BuildInfo::version_str);
  root->set_attribute("software_build", BuildInfo::date_str);
  root->set_attribute("software_platform", xml_text(platform));
  return root;
}

void add_member_place_and_time(xmlpp::Element* element, const SurveyForm& form)
{
  add_text(element, "member_id", form.member_id);
  add_text(element, "last_name", form.last_name);
  add_text(element, "subregion", form.subregion);
  add_id(element, "survey_subtype", form.survey_subtype);
  add_text(element, "year", padded(form.year, 4));
  add_text(element, "month", padded(form.month, 2));
  add_text(element, "mday", padded(form.mday, 2));
  add_id(element, "dive_start", form.dive_start);
  add_text(element, "zonecode", form.zonecode);
}

void add_conditions(xmlpp::Element* element, const SurveyForm& form)
{
  add_text(element, "surface_temp", form.surface_temp);
  add_text(element, "bottom_temp", form.bottom_temp);
  add_text(element, "temp_units", form.temp_units.empty() ? "F" : form.temp_units);
  add_text(element, "bottom_time", form.bottom_time)
      ->set_attribute("confirmed", form.bottom_time_confirmed ? "1" : "0");
  add_id(element, "visibility", form.visibility);
  add_id(element, "avg_depth", form.avg_depth);
  add_id(element, "max_depth", form.max_depth);
  add_id(element, "current", form.current);
  add_id(element, "habitat", form.habitat);
}

void add_species(xmlpp::Element* ids, const std::vector<SpeciesSighting>& sightings)
{
  for (const SpeciesSighting& sighting : sightings) {
    xmlpp::Element* const element = ids->add_child("species");
    element->set_attribute("id", padded(sighting.id, 4));
    element->set_attribute("abun", std::to_string(sighting.abun));
    element->set_attribute("resp", std::to_string(sighting.resp));
  }
}

} // namespace

std::vector<SpeciesSighting> species_sightings(const SurveyData& survey,
                                               const AbundanceChoices& choices)
{
  std::vector<SpeciesSighting> sightings;
  for (const auto& [id, abundance] : survey.abundances) {
    if (abundance == 0)
      continue;
    const int abun = written_abundance(abundance, survey.survey_subtype);
    const int resp = response_id(id, abun, survey, choices);
    if (resp < 1)
      throw Glib::ustring("Internal error: abun " + std::to_string(abun) + " -> resp " +
                          std::to_string(resp) + "?!");
    sightings.push_back({id, abun, resp});
  }
  return sightings;
}

Glib::ustring software_platform()
{
  std::string line;
  const Pipe uname(popen("uname -a", "r"));
  if (!uname)
    return line;
  for (int c = std::fgetc(uname.get()); c != EOF && c != '\n'; c = std::fgetc(uname.get()))
    line += static_cast<char>(c);
  return line;
}

Glib::ustring survey_document(const SurveyForm& form, const std::vector<SpeciesSighting>& species,
                              const Glib::ustring& platform)
{
  xmlpp::Document document("1.0");
  xmlpp::Element* const survey = add_root(document, platform)->add_child("survey");
  add_member_place_and_time(survey, form);
  add_conditions(survey, form);
  add_id(survey, "species_view", form.species_view);
  add_species(survey->add_child("ids"), species);
  return document.write_to_string_formatted("UTF-8");
}
