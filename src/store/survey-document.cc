#include "store/survey-document.h"

#include "core/c-resource.h"
#include "core/version.h"
#include "data/region-fish-info.h"
#include "data/region.h"
#include "store/survey-fields.h"
#include "store/survey-xml-info.h"

#include <libxml++/document.h>

#include <algorithm>
#include <cstdio>
#include <string>

namespace {

// Returns the abundance class for the document. Survey types without abundances record only the
// presence of a species. A survey without a type keeps the class that the user entered.
int written_abundance(int abundance, const Region* survey_subtype)
{
  return abundance > 1 && survey_subtype && !survey_subtype->hasabundance ? 1 : abundance;
}

// Returns the server's number of the class, or -1 if the reference data have none. The reference
// data may lack a species, for example if a program with newer data has saved the survey. For
// such a species, uses the list of the survey type.
int response_id(int species_id, int abundance, const SurveyData& survey,
                const AbundanceChoices& choices)
{
  if (!survey.region_fish || species_id < 1)
    return -1;
  const RegionFishInfo::Species* const species = survey.region_fish->find_species(species_id);
  const AbundanceChoices::SurveySubtypeChoiceInfo* const list =
      species && species->is_presence_only()
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
    return text; // most texts and all numbers
  Glib::ustring kept;
  for (const gunichar c : text.make_valid())
    if (is_xml_char(c))
      kept += c;
  return kept;
}

xmlpp::Element* add_text(xmlpp::Element* parent, const Glib::ustring& name,
                         const Glib::ustring& text)
{
  xmlpp::Element* const element = parent->add_child(name);
  element->add_child_text(xml_text(text));
  return element;
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

void add_fields(xmlpp::Element* element, const Survey& survey)
{
  for (const SurveyField& field : survey_fields()) {
    xmlpp::Element* const added = add_text(element, field.name, field_text(field, survey));
    if (field.kind == FieldKind::bottom_time)
      added->set_attribute("confirmed", survey.bottom_time_confirmed ? "1" : "0");
  }
}

void add_species(xmlpp::Element* ids, const std::vector<SpeciesSighting>& sightings)
{
  for (const SpeciesSighting& sighting : sightings) {
    if (sighting.abun == 0)
      continue;
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

Glib::ustring survey_document(const Survey& survey, const Glib::ustring& platform)
{
  xmlpp::Document document("1.0");
  xmlpp::Element* const element = add_root(document, platform)->add_child("survey");
  add_fields(element, survey);
  add_species(element->add_child("ids"), survey.species);
  return document.write_to_string_formatted("UTF-8");
}
