// The opening road below the widgets: what a document says is read as it is for
// a window and written as it is from one. What was written can be read again
// and comes back the same.
#include "core/number.h"
#include "core/thrown-text.h"
#include "store/survey-document.h"
#include "store/survey-reader.h"

#include <optional>

#include "target.h"

namespace {

struct OpenedSurvey {
  SurveyForm form;
  std::map<int, int> abundances;
};

struct TextField {
  const char* name;
  Glib::ustring SurveyForm::*text;
};
const TextField text_fields[] = {
    {"member_id", &SurveyForm::member_id},       {"last_name", &SurveyForm::last_name},
    {"subregion", &SurveyForm::subregion},       {"zonecode", &SurveyForm::zonecode},
    {"surface_temp", &SurveyForm::surface_temp}, {"bottom_temp", &SurveyForm::bottom_temp},
    {"temp_units", &SurveyForm::temp_units},     {"bottom_time", &SurveyForm::bottom_time},
};

struct NumberField {
  const char* name;
  int SurveyForm::*number;
};
const NumberField number_fields[] = {
    {"survey_subtype", &SurveyForm::survey_subtype},
    {"year", &SurveyForm::year},
    {"month", &SurveyForm::month},
    {"mday", &SurveyForm::mday},
    {"dive_start", &SurveyForm::dive_start},
    {"visibility", &SurveyForm::visibility},
    {"avg_depth", &SurveyForm::avg_depth},
    {"max_depth", &SurveyForm::max_depth},
    {"current", &SurveyForm::current},
    {"habitat", &SurveyForm::habitat},
    {"species_view", &SurveyForm::species_view},
};

void open_element(const xmlpp::Node& element, OpenedSurvey& survey)
{
  const std::string name = element.get_name().raw();
  for (const auto& field : text_fields)
    if (name == field.name)
      survey.form.*field.text = get_content(&element);
  for (const auto& field : number_fields)
    if (name == field.name)
      survey.form.*field.number = to_int(get_content(&element));
  if (name == "bottom_time")
    survey.form.bottom_time_confirmed = get_numeric_attr(&element, "confirmed") != 0;
  else if (name == "ids")
    read_sightings(element, survey.abundances);
}

OpenedSurvey open_survey(const std::string& path)
{
  SurveyParser parser;
  const xmlpp::Node* const element = parse_survey_file(parser, path);
  OpenedSurvey survey;
  for (const xmlpp::Node* node = element->get_first_child(); node; node = node->get_next_sibling())
    if (!is_white_space(node))
      open_element(*node, survey);
  return survey;
}

std::string saved(const OpenedSurvey& survey)
{
  std::vector<SpeciesSighting> sightings;
  for (const auto& [id, abundance] : survey.abundances)
    if (abundance != 0)
      sightings.push_back({id, abundance, 1});
  return survey_document(survey.form, sightings, "Linux").raw();
}

std::optional<OpenedSurvey> try_to_open(const std::string& path)
{
  try {
    return open_survey(path);
  } catch (...) {
    require(!thrown_text("", "").empty(), "the user is told what is wrong");
    return std::nullopt;
  }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
  static const Scratch scratch;
  scratch.write("survey", bytes_of(data, size));
  const auto opened = try_to_open(scratch.dir + "survey");
  if (!opened)
    return 0;

  const std::string document = saved(*opened);
  scratch.write("survey", document);
  const auto opened_again = try_to_open(scratch.dir + "survey");
  require(opened_again.has_value(), "what is saved can be opened");
  for (const auto& field : text_fields) {
    require((opened->form.*field.text).raw() == (opened_again->form.*field.text).raw() ||
                field.text == &SurveyForm::temp_units, // which are never empty
            "a text is saved to the byte");
  }
  require(document == saved(*opened_again), "what is opened is saved the same");
  return 0;
}
