#include "cli/survey-export.h"

#include "store/survey-file-name.h"

#include <cstdio>
#include <map>
#include <memory>

#include "cli/could-not-run.h"
#include "cli/csv-exporter.h"
#include "cli/darwin-core-exporter.h"
#include "cli/finding-writer.h"
#include "cli/json-exporter.h"
#include "cli/option-entry.h"
#include "cli/progress.h"
#include "cli/store-guard.h"
#include "cli/survey-finding.h"
#include "cli/survey-id.h"
#include "cli/survey-paths.h"

namespace {

std::unique_ptr<SurveyExporter> make_exporter(const Glib::ustring& format, OutputFile& output,
                                              const SurveyNames& names)
{
  if (format == "csv")
    return std::make_unique<CsvExporter>(output, names);
  if (format == "json")
    return std::make_unique<JsonExporter>(output, names);
  return std::make_unique<DarwinCoreExporter>(output, names);
}

// Passes surveys to an exporter and reports their faults on standard error.
class ExportRun
{
public:
  ExportRun(SurveyExporter& the_exporter, const SurveyNames& the_names, bool the_rows_only)
      : exporter(the_exporter), names(the_names), rows_only(the_rows_only)
  {
  }

  void add(const std::string& path);
  void report(const Finding& finding);

  ExitStatus status = ExitStatus::FINE;
  Progress progress;

private:
  // Returns whether the survey is the first one with this id.
  bool is_new(const std::string& id, const std::string& path);

  SurveyExporter& exporter;
  const SurveyNames& names;
  const bool rows_only;                   // whether the format omits surveys without sightings
  std::map<std::string, std::string> ids; // the names of files by the id of the survey
};

void ExportRun::report(const Finding& finding)
{
  progress.clear();
  std::fputs(plain_line(finding).c_str(), stderr);
  if (finding.severity != Severity::hint)
    status = ExitStatus::FAULTS;
}

bool ExportRun::is_new(const std::string& id, const std::string& path)
{
  const auto [first, added] = ids.emplace(id, base_name(path));
  if (!added) {
    report({path,
            {},
            "same-survey",
            Severity::hint,
            "The survey is left out: it has the same content as " + first->second});
  }
  return added;
}

void ExportRun::add(const std::string& path)
{
  std::optional<Finding> why_not;
  const std::optional<Survey> survey = read_known_survey(path, names, why_not);
  if (!survey)
    return report(*why_not);
  const std::string id = survey_id(*survey);
  if (!is_new(id, path))
    return;
  if (const auto unknown = unknown_species(path, *survey, names))
    report(*unknown);
  if (survey->species.empty() && rows_only) {
    report({path,
            {},
            "no-sighting",
            Severity::hint,
            "The survey has no species, so the table has no row for it"});
  }
  exporter.add(base_name(path), id, *survey);
}

} // namespace

void SurveyExport::add_options(Glib::OptionGroup& options)
{
  options.add_entry(option_entry("format", "write 'csv', 'json' or 'dwca' (required)", "FORMAT"),
                    format);
  options.add_entry_filename(
      option_entry("output", "write to FILE instead of standard output", "FILE", 'o'), output_path);
  data_option.add_to(options);
}

ExitStatus SurveyExport::run(const std::vector<std::string>& arguments, Output& out)
{
  if (format != "csv" && format != "json" && format != "dwca")
    throw CouldNotRun("--format must be csv, json or dwca");
  keep_out_of_store(output_path);
  const SurveyNames names(data_option.load());
  std::vector<Finding> left_out;
  const std::vector<std::string> paths = survey_paths(arguments, left_out);

  OutputFile output(output_path, OutputFile::Existing::replace, out);
  const auto exporter = make_exporter(format, output, names);
  ExportRun run(*exporter, names, format != "dwca");
  for (const Finding& finding : left_out)
    run.report(finding);
  for (std::size_t i = 0; i < paths.size(); ++i) {
    run.progress.show(i, paths.size());
    run.add(paths[i]);
  }
  run.progress.clear();
  exporter->finish();
  output.commit();
  return run.status;
}
