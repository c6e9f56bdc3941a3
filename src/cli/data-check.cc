#include "cli/data-check.h"

#include "data/data-file-info.h"
#include "data/data-file.h"

#include <filesystem>

#include "cli/could-not-run.h"

namespace fs = std::filesystem;

namespace {

void check_data_set(const std::string& dir, FindingWriter& writer)
{
  const std::string path = (fs::path(dir) / DataFileInfo::get_filename()).string();
  if (!open_data_file(path).is_open())
    writer.write({path,
                  {},
                  "file-missing",
                  Severity::error,
                  "The program cannot read the data set and ends at each start"});
}

} // namespace

void DataCheck::add_options(Glib::OptionGroup& options)
{
  finding_options.add_to(options);
}

ExitStatus DataCheck::run(const std::vector<std::string>& arguments, Output& out)
{
  FindingWriter writer = finding_options.make_writer(out);
  for (const std::string& dir : arguments) {
    std::error_code failure;
    if (!fs::is_directory(dir, failure))
      throw CouldNotRun(dir + " is no directory");
    check_data_set(dir, writer);
  }
  return writer.status();
}
