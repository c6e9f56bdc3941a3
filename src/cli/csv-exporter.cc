#include "cli/csv-exporter.h"

#include "cli/csv-row.h"
#include "cli/survey-cells.h"

namespace {

struct TextOfValue {
  std::string operator()(std::monostate) const { return {}; }
  std::string operator()(int number) const { return std::to_string(number); }
  std::string operator()(bool flag) const { return flag ? "1" : "0"; }
  std::string operator()(const std::string& text) const { return text; }
};

void add_values(std::vector<std::string>& fields, const std::vector<SurveyCell>& cells)
{
  for (const SurveyCell& cell : cells)
    fields.push_back(std::visit(TextOfValue(), cell.value));
}

void add_columns(std::vector<std::string>& fields, const std::vector<SurveyCell>& cells)
{
  for (const SurveyCell& cell : cells)
    fields.emplace_back(cell.column);
}

} // namespace

CsvExporter::CsvExporter(OutputFile& the_output, const SurveyNames& the_names)
    : output(the_output), names(the_names)
{
  std::vector<std::string> headings;
  add_columns(headings, survey_cells("", "", Survey(), names));
  add_columns(headings, sighting_cells(Survey(), SpeciesSighting(), names));
  output.write(csv_row(headings));
}

void CsvExporter::add(const std::string& file, const std::string& id, const Survey& survey)
{
  std::vector<std::string> common;
  add_values(common, survey_cells(file, id, survey, names));
  for (const SpeciesSighting& sighting : survey.species) {
    std::vector<std::string> fields = common;
    add_values(fields, sighting_cells(survey, sighting, names));
    output.write(csv_row(fields));
  }
}
