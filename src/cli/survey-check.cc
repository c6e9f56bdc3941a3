#include "cli/survey-check.h"

#include "store/survey-judgement.h"
#include "store/survey-reader.h"

#include <libxml++/document.h>

#include <algorithm>
#include <ctime>

#include "cli/survey-finding.h"
#include "cli/survey-paths.h"
#include "cli/survey-schema.h"

namespace {

// Checks files one after the other.
class CheckRun
{
public:
  CheckRun(const ReferenceData& the_data, FindingWriter& the_writer)
      : data(the_data), names(the_data), writer(the_writer)
  {
  }

  void check(const std::string& path);

private:
  void check_schema(const std::string& path, SurveyParser& parser) const;
  void check_entries(const std::string& path, const xmlpp::Node* element) const;

  const ReferenceData data;
  const SurveyNames names;
  const SurveySchema schema;
  FindingWriter& writer;
};

void CheckRun::check(const std::string& path)
{
  SurveyParser parser;
  const xmlpp::Node* element = nullptr;
  try {
    element = parse_survey_file(parser, path);
  } catch (...) { // NOLINT(bugprone-empty-catch): read_known_survey() reports it
  }
  if (element)
    check_schema(path, parser);
  check_entries(path, element);
}

void CheckRun::check_schema(const std::string& path, SurveyParser& parser) const
{
  for (const SchemaFault& fault : schema.faults_of(parser.get_document()->cobj()))
    writer.write({path, fault.line, "schema", Severity::error,
                  "Other programs may refuse the survey: " + fault.text});
}

// Returns the line of an entry, or that of the "survey" element if the entry is missing. Returns
// nullopt if `survey` is null because the file could not be parsed.
std::optional<long> line_of(const xmlpp::Node* survey, const std::string& field)
{
  if (!survey)
    return std::nullopt;
  const auto fields = survey->get_children(field);
  return (fields.empty() ? survey : fields.front())->get_line();
}

// Returns the id of the rule for a field, such as "entry-member-id".
std::string rule_of(const std::string& field)
{
  std::string rule = "entry-" + field;
  std::replace(rule.begin(), rule.end(), '_', '-');
  return rule;
}

void CheckRun::check_entries(const std::string& path, const xmlpp::Node* element) const
{
  std::optional<Finding> fault;
  const std::optional<Survey> survey = read_known_survey(path, names, fault);
  if (!survey)
    return writer.write(*fault);
  if (const auto unknown = unknown_species(path, *survey, names))
    writer.write(*unknown);
  for (const SurveyComplaint& complaint : survey_complaints(*survey, data, std::time(nullptr))) {
    writer.write({path, line_of(element, complaint.field), rule_of(complaint.field),
                  Severity::error,
                  "The survey cannot be marked for upload: " + complaint.field + ": " +
                      complaint.text.raw()});
  }
}

} // namespace

void SurveyCheck::add_options(Glib::OptionGroup& options)
{
  data_option.add_to(options);
  finding_options.add_to(options);
}

ExitStatus SurveyCheck::run(const std::vector<std::string>& arguments, Output& out)
{
  FindingWriter writer = finding_options.make_writer(out);
  std::vector<Finding> left_out;
  const std::vector<std::string> paths = survey_paths(arguments, left_out);
  CheckRun run(data_option.load(), writer);
  for (const Finding& finding : left_out)
    writer.write(finding);
  for (const std::string& path : paths)
    run.check(path);
  return writer.status();
}
