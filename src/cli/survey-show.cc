#include "cli/survey-show.h"

#include "core/thrown-text.h"
#include "store/survey-file-name.h"

#include <glibmm/convert.h>

#include <ctime>

#include "cli/browser.h"
#include "cli/could-not-run.h"
#include "cli/option-entry.h"
#include "cli/output.h"
#include "cli/survey-finding.h"
#include "cli/survey-page.h"

namespace {

// Throws CouldNotRun if the file is not a survey or its location is not in the data set.
ReadableSurvey read_readable(const std::string& path, const ReferenceData& data)
{
  const SurveyNames names(data);
  std::optional<Finding> why_not;
  const std::optional<Survey> survey = read_known_survey(path, names, why_not);
  if (!survey)
    throw CouldNotRun(path + ": " + why_not->consequence);
  return readable_survey(*survey, names, survey_complaints(*survey, data, std::time(nullptr)));
}

std::string shown_name(const std::string& path)
{
  return Glib::filename_display_basename(path).raw();
}

} // namespace

void SurveyShow::add_options(Glib::OptionGroup& options)
{
  options.add_entry(option_entry("html", "show an HTML page instead of plain text"), as_html);
  options.add_entry(option_entry("open", "with --html: open the page in the browser"), opens);
  data_option.add_to(options);
}

std::string SurveyShow::page_of(const std::string& path, ExitStatus& status) const
{
  try {
    return survey_page(read_readable(path, data_option.load()), shown_name(path));
  } catch (const CouldNotRun& failure) {
    status = ExitStatus::FAULTS;
    return failure_page(shown_name(path), failure.what());
  }
}

ExitStatus SurveyShow::run(const std::vector<std::string>& arguments, Output& out)
{
  const std::string& path = arguments.front();
  if (opens && !as_html)
    throw CouldNotRun("--open requires --html");
  if (!opens) {
    const ReadableSurvey survey = read_readable(path, data_option.load());
    out.write(as_html ? survey_page(survey, shown_name(path)) : survey_text(survey));
    return ExitStatus::FINE;
  }
  // A user who double-clicks a file sees no terminal. So the page in the browser reports faults.
  ExitStatus status = ExitStatus::FINE;
  open_in_browser(page_of(path, status), path);
  return status;
}
