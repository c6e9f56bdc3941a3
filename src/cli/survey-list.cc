#include "cli/survey-list.h"

#include "store/survey-files.h"

#include <glibmm/ustring.h>

#include <cstdio>
#include <nlohmann/json.hpp>

#include "cli/could-not-run.h"
#include "cli/finding-writer.h"
#include "cli/option-entry.h"
#include "cli/output.h"
#include "cli/survey-paths.h"

namespace {

struct ListedSurvey {
  std::string state; // empty if the file is not in the directory of a state
  std::string path;
  std::string description; // empty if the file cannot be read
};

// Returns the text without tabs, which separate columns, and without line ends.
std::string column(const std::string& text)
{
  Glib::ustring line;
  for (const gunichar c : Glib::ustring(text).make_valid())
    line += g_unichar_iscntrl(c) ? gunichar{0xFFFD} : c;
  return line.raw();
}

std::string plain_row(const ListedSurvey& survey)
{
  const std::string description =
      survey.description.empty() ? "(corrupted survey file)" : survey.description;
  return (survey.state.empty() ? "-" : survey.state) + "\t" + column(survey.path) + "\t" +
         column(description) + "\n";
}

nlohmann::ordered_json text_or_null(const std::string& text)
{
  if (text.empty())
    return nullptr;
  return Glib::ustring(text).make_valid().raw();
}

std::string json_row(const ListedSurvey& survey)
{
  nlohmann::ordered_json row;
  row["state"] = text_or_null(survey.state);
  row["file"] = text_or_null(survey.path);
  row["description"] = text_or_null(survey.description);
  return row.dump() + "\n";
}

} // namespace

void SurveyList::add_options(Glib::OptionGroup& options)
{
  options.add_entry(option_entry("format", "print 'plain' lines or 'json'", "FORMAT"), format);
  data_option.add_to(options);
}

ExitStatus SurveyList::run(const std::vector<std::string>& arguments, Output& out)
{
  if (format != "plain" && format != "json")
    throw CouldNotRun("there is no format '" + format.raw() + "'");
  std::vector<Finding> left_out;
  const std::vector<std::string> paths = survey_paths(arguments, left_out);
  for (const Finding& finding : left_out)
    std::fputs(plain_line(finding).c_str(), stderr);
  const ReferenceData data = data_option.load();
  ExitStatus status = ExitStatus::FINE;
  for (const std::string& path : paths) {
    const ListedSurvey survey{
        state_of(path), path,
        describe_survey_file(path, *data.region_info, *data.data_defs, nullptr)};
    out.write(format == "json" ? json_row(survey) : plain_row(survey));
    if (survey.description.empty())
      status = ExitStatus::FAULTS;
  }
  return status;
}
