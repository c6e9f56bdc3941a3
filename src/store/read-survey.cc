#include "store/read-survey.h"

#include "core/number.h"
#include "core/text.h"
#include "store/survey-head-parser.h"
#include "store/survey-reader.h"

#include <cstdlib>
#include <map>

namespace {

// Returns whether a number exceeds the range of int. Such an id would become the id of another
// species.
bool loses_digits(const Glib::ustring& number)
{
  return std::strtol(number.c_str(), nullptr, 10) != to_int(number);
}

SpeciesSighting read_sighting(const xmlpp::Node& node)
{
  if (!same_bytes(node.get_name(), "species"))
    throw "MAVO Survey has a problem - unknown tag \"" + node.get_name() + "\" in ids section";
  const int id = get_numeric_attr(&node, "id");
  const int abundance = get_numeric_attr(&node, "abun");
  // get_numeric_attr() returns 0 also for a text that is not a number.
  const bool is_zero = abundance == 0 && same_bytes(get_attr(&node, "abun"), "0");
  if (id <= 0 || loses_digits(get_attr(&node, "id")) || (abundance <= 0 && !is_zero))
    throw Glib::ustring("MAVO Survey has invalid id (" + std::to_string(id) + ") or abundance (" +
                        std::to_string(abundance) + ") for species");
  return {id, abundance, get_numeric_attr(&node, "resp")};
}

SurveyElement element_of(const xmlpp::Node& node, const SurveyField& field)
{
  SurveyElement element;
  element.field = &field;
  element.text = get_content(&node);
  if (field.kind == FieldKind::bottom_time)
    element.confirmed = get_numeric_attr(&node, "confirmed") != 0;
  return element;
}

// Collects the entries in the children of the "survey" element.
class ElementReader
{
public:
  explicit ElementReader(std::vector<SurveyElement>& the_elements) : elements(the_elements) {}

  // Adds the entries of an element. Throws a text if the element is wrong.
  void read(const xmlpp::Node& node)
  {
    const Glib::ustring name = node.get_name();
    if (same_bytes(name, "ids"))
      read_species(node);
    else if (same_bytes(name, "depth"))
      read_single_depth(node);
    else if (const SurveyField* const field = find_survey_field(name))
      read_field(node, *field);
    else
      throw "MAVO Survey has unknown tag '" + name + "'";
  }

private:
  void read_field(const xmlpp::Node& node, const SurveyField& field)
  {
    elements.push_back(element_of(node, field));
    const Glib::ustring& text = elements.back().text;
    if (field.kind == FieldKind::location)
      single_depth_is_maximum = same_bytes(text, "PNW") || same_bytes(text, "CAL");
  }

  void read_single_depth(const xmlpp::Node& node)
  {
    const SurveyField* const average = find_survey_field("avg_depth");
    const SurveyField* const maximum = find_survey_field("max_depth");
    elements.push_back(element_of(node, single_depth_is_maximum ? *maximum : *average));
    elements.back().emptied = single_depth_is_maximum ? average : maximum;
  }

  void read_species(const xmlpp::Node& ids)
  {
    for (const xmlpp::Node* node = ids.get_first_child(); node; node = node->get_next_sibling()) {
      if (is_white_space(node))
        continue;
      SurveyElement element;
      element.species = read_sighting(*node);
      elements.push_back(element);
    }
  }

  std::vector<SurveyElement>& elements;
  bool single_depth_is_maximum = false; // in the location that was last read
};

// Enters the value of a field. Throws a text if a location is wrong.
void enter(const SurveyElement& element, bool follows_species, Survey& survey)
{
  const SurveyField& field = *element.field;
  if (field.kind == FieldKind::location)
    check_location(element.text, follows_species);
  if (element.emptied)
    set_field_text(*element.emptied, "-1", survey);
  set_field_text(field, element.text, survey);
  if (field.kind == FieldKind::bottom_time)
    survey.bottom_time_confirmed = element.confirmed;
}

SurveyReading read_children(const xmlpp::Node& survey)
{
  SurveyReading reading;
  ElementReader reader(reading.elements);
  try {
    for (const xmlpp::Node* node = survey.get_first_child(); node; node = node->get_next_sibling())
      if (!is_white_space(node))
        reader.read(*node);
  } catch (const Glib::ustring& fault) {
    reading.fault = fault;
  }
  return reading;
}

Survey survey_of(const SurveyReading& reading)
{
  Survey survey;
  std::map<int, SpeciesSighting> species; // the last one of repeated species counts
  for (const SurveyElement& element : reading.elements) {
    if (element.field)
      enter(element, !species.empty(), survey);
    else
      species[element.species.id] = element.species;
  }
  if (!reading.fault.empty())
    throw Glib::ustring(reading.fault);
  for (const auto& [id, sighting] : species)
    survey.species.push_back(sighting);
  return survey;
}

} // namespace

SurveyReading read_survey_elements(const std::string& path)
{
  SurveyParser parser;
  return read_children(*parse_survey_file(parser, path));
}

std::vector<SurveyElement> read_survey_head(const std::string& path)
{
  SurveyHeadParser parser;
  const xmlpp::Node* const survey = parse_survey_file(parser, path);
  std::vector<SurveyElement> elements;
  for (const xmlpp::Node* node = survey->get_first_child(); node; node = node->get_next_sibling())
    if (const SurveyField* const field = find_survey_field(node->get_name()))
      elements.push_back(element_of(*node, *field));
  return elements;
}

void check_location(const Glib::ustring& code, bool follows_species)
{
  if (code.empty())
    throw Glib::ustring("MAVO Survey names no location");
  if (follows_species)
    throw Glib::ustring("MAVO Survey has species in front of its location");
}

Survey read_survey(const std::string& path)
{
  return survey_of(read_survey_elements(path));
}

Survey read_survey_bytes(const std::string& contents)
{
  SurveyParser parser;
  return survey_of(read_children(*parse_survey_bytes(parser, contents)));
}
