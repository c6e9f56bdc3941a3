#include "cli/survey-schema.h"

#include <libxml/relaxng.h>

#include <map>
#include <utility>

#include "cli/survey-schema-text.h"

namespace {

struct ParserFree {
  void operator()(xmlRelaxNGParserCtxt* parser) const { xmlRelaxNGFreeParserCtxt(parser); }
};
struct ValidFree {
  void operator()(xmlRelaxNGValidCtxt* valid) const { xmlRelaxNGFreeValidCtxt(valid); }
};

std::string without_line_end(std::string text)
{
  text.erase(text.find_last_not_of(" \n") + 1);
  return text;
}

std::string attribute(xmlNode* element, const char* name)
{
  xmlChar* const value = xmlGetNoNsProp(element, BAD_CAST name);
  std::string text = value ? reinterpret_cast<const char*>(value) : "";
  xmlFree(value);
  return text;
}

// Returns whether the document claims that this program wrote it.
bool claims_to_be_written(xmlDoc* document)
{
  xmlNode* const root = xmlDocGetRootElement(document);
  return root && xmlStrEqual(root->name, BAD_CAST "MAVO-Survey") != 0 &&
         attribute(root, "version") == "1.0";
}

// Returns the schema for only the documents that the program writes.
std::string schema_of_written()
{
  std::string text = survey_schema_text;
  const std::string end = "</start>";
  const std::size_t from = text.find("<start>");
  const std::size_t to = text.find(end);
  if (from != std::string::npos && to != std::string::npos)
    text.replace(from, to + end.size() - from, "<start><ref name=\"written\"/></start>");
  return text;
}

// Returns the last fault of each line. The library reports the parts of an element first and
// the element last.
std::vector<SchemaFault> last_of_each_line(std::vector<SchemaFault> faults)
{
  std::map<std::optional<long>, SchemaFault> by_line;
  for (SchemaFault& fault : faults)
    by_line[fault.line] = std::move(fault);
  std::vector<SchemaFault> kept;
  kept.reserve(by_line.size());
  for (auto& [line, fault] : by_line)
    kept.push_back(std::move(fault));
  return kept;
}

} // namespace

void SurveySchema::Free::operator()(_xmlRelaxNG* read) const
{
  xmlRelaxNGFree(read);
}

SurveySchema::Schema SurveySchema::parse(const std::string& text)
{
  const std::unique_ptr<xmlRelaxNGParserCtxt, ParserFree> parser(
      xmlRelaxNGNewMemParserCtxt(text.data(), static_cast<int>(text.size())));
  return Schema(xmlRelaxNGParse(parser.get()));
}

SurveySchema::SurveySchema() : any(parse(survey_schema_text)), written(parse(schema_of_written()))
{
}

std::vector<SchemaFault> SurveySchema::faults_of(_xmlDoc* document) const
{
  std::vector<SchemaFault> faults;
  const Schema& schema = claims_to_be_written(document) ? written : any;
  const std::unique_ptr<xmlRelaxNGValidCtxt, ValidFree> valid(xmlRelaxNGNewValidCtxt(schema.get()));
  // The parameter is `auto` because the error is constant only in some versions of the library.
  xmlRelaxNGSetValidStructuredErrors(
      valid.get(),
      [](void* list, auto* error) {
        SchemaFault fault;
        if (error->line > 0) // the library reports line 0 for an element that it did not expect
          fault.line = error->line;
        fault.text = without_line_end(error->message ? error->message : "");
        static_cast<std::vector<SchemaFault>*>(list)->push_back(fault);
      },
      &faults);
  if (xmlRelaxNGValidateDoc(valid.get(), document) != 0 && faults.empty())
    faults.push_back({1, "The document does not conform to the schema"});
  return last_of_each_line(std::move(faults));
}
