// Target: a received file in mavo-surveys, from reading it to its page, its text and its rows.
#include "store/survey-reader.h"
#include "support/data-set.h"

#include <libxml++/document.h>
#include <libxml++/parsers/domparser.h>

#include "cli/readable-survey.h"
#include "cli/survey-cells.h"
#include "cli/survey-finding.h"
#include "cli/survey-id.h"
#include "cli/survey-page.h"
#include "cli/survey-schema.h"
#include "target.h"

namespace {

struct Tables {
  Tables()
  {
    set.minimal();
    require(read_data_set(set.dir, data) == RET_SUCCESS, "the valid data set can be read");
  }

  DataSet set;
  ReferenceData data;
  SurveySchema schema;
};

void check_schema(const std::string& path, const SurveySchema& schema)
{
  SurveyParser parser;
  try {
    parse_survey_file(parser, path);
  } catch (...) {
    return; // not a survey
  }
  for (const SchemaFault& fault : schema.faults_of(parser.get_document()->cobj()))
    require(fault.line.value_or(1) > 0 && !fault.text.empty(),
            "a fault has a text, and its line is not 0");
}

void require_page(const std::string& page)
{
  require(Glib::ustring(page).validate(), "a page is valid UTF-8");
  require(page.find("<script") == std::string::npos, "a page contains no script");
  xmlpp::DomParser parser;
  parser.parse_memory(page); // throws if the page is not well-formed
}

void require_cells(const std::vector<SurveyCell>& cells)
{
  for (const SurveyCell& cell : cells)
    if (const auto* const text = std::get_if<std::string>(&cell.value))
      require(Glib::ustring(*text).validate(), "a cell is valid UTF-8");
}

void show(const Survey& survey, const Tables& tables)
{
  constexpr std::time_t now = 1'800'000'000;
  const SurveyNames names(tables.data);
  const ReadableSurvey readable =
      readable_survey(survey, names, survey_complaints(survey, tables.data, now));
  require_page(survey_page(readable, "survey"));
  require(Glib::ustring(survey_text(readable)).validate(), "the text of a survey is valid UTF-8");
  require_cells(survey_cells("survey", survey_id(survey), survey, names));
  for (const SpeciesSighting& sighting : survey.species)
    require_cells(sighting_cells(survey, sighting, names));
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
  static const Tables tables;
  static const Scratch scratch;
  scratch.write("survey", bytes_of(data, size));
  const std::string path = scratch.dir + "survey";
  check_schema(path, tables.schema);
  std::optional<Finding> why_not;
  const auto survey = read_known_survey(path, SurveyNames(tables.data), why_not);
  require(survey.has_value() != why_not.has_value(),
          "a file is either read or refused with a reason");
  if (survey)
    show(*survey, tables);
  else
    require_page(failure_page("survey", why_not->consequence));
  return 0;
}
