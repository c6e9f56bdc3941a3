#include "cli/json-exporter.h"

#include <nlohmann/json.hpp>

#include "cli/survey-cells.h"

namespace {

using Json = nlohmann::ordered_json;

struct JsonOfValue {
  Json operator()(std::monostate) const { return nullptr; }
  template<typename Value>
  Json operator()(const Value& value) const
  {
    return value;
  }
};

void add_values(Json& row, const std::vector<SurveyCell>& cells)
{
  for (const SurveyCell& cell : cells)
    row[cell.column] = std::visit(JsonOfValue(), cell.value);
}

} // namespace

JsonExporter::JsonExporter(OutputFile& the_output, const SurveyNames& the_names)
    : output(the_output), names(the_names)
{
  output.write("[");
}

void JsonExporter::add(const std::string& file, const std::string& id, const Survey& survey)
{
  Json common;
  add_values(common, survey_cells(file, id, survey, names));
  for (const SpeciesSighting& sighting : survey.species) {
    Json row = common;
    add_values(row, sighting_cells(survey, sighting, names));
    output.write((has_rows ? ",\n" : "\n") + row.dump());
    has_rows = true;
  }
}

void JsonExporter::finish()
{
  output.write("\n]\n");
}
