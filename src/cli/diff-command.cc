#include "cli/diff-command.h"

#include <filesystem>

#include "cli/data-diff.h"
#include "cli/loaded-data.h"
#include "cli/option-entry.h"
#include "cli/survey-harms.h"

namespace fs = std::filesystem;

void DiffCommand::add_options(Glib::OptionGroup& options)
{
  finding_options.add_to(options);
  options.add_entry_filename(
      option_entry("surveys", "list the saved surveys in DIR that the new data harm", "DIR"),
      surveys);
}

ExitStatus DiffCommand::run(const std::vector<std::string>& arguments, Output& out)
{
  FindingWriter writer = finding_options.make_writer(out);
  const std::string& old_dir = arguments.front();
  const std::string& new_dir = arguments.back();
  const ReferenceData old_data = load_data_set(old_dir);
  const ReferenceData new_data = load_data_set(new_dir);
  const DataDiff diff = compare_data_sets(old_data, (fs::path(old_dir) / "").string(), new_data,
                                          (fs::path(new_dir) / "").string());
  for (const Finding& finding : diff.findings)
    writer.write(finding);
  for (const std::string& place : surveys)
    for (const Finding& finding : find_harmed_surveys(place, old_data, new_data, diff))
      writer.write(finding);
  return writer.status();
}
