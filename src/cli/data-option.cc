#include "cli/data-option.h"

#include <filesystem>

#include "cli/could-not-run.h"
#include "cli/loaded-data.h"
#include "cli/option-entry.h"

namespace fs = std::filesystem;

namespace {

// Returns the directory of the program and its data: the installed one, or the build directory.
fs::path application_directory()
{
  const fs::path prefix = fs::read_symlink("/proc/self/exe").parent_path().parent_path();
  const fs::path installed = prefix / "lib" / "mavo-survey";
  return fs::exists(installed) ? installed : prefix / "MAVO-Survey";
}

// Changes the working directory to that of the program during its lifetime. The functions that
// look for data expect that.
class ProgramDirectory
{
public:
  ProgramDirectory() : previous(fs::current_path())
  {
    std::error_code ignored; // on failure, only a downloaded set can be found
    fs::current_path(application_directory(), ignored);
  }
  ~ProgramDirectory()
  {
    std::error_code ignored;
    fs::current_path(previous, ignored);
  }
  ProgramDirectory(const ProgramDirectory&) = delete;
  ProgramDirectory& operator=(const ProgramDirectory&) = delete;

private:
  const fs::path previous;
};

} // namespace

void DataOption::add_to(Glib::OptionGroup& options)
{
  options.add_entry_filename(
      option_entry("data", "use this data set instead of that of the program", "DIR"), dir);
}

ReferenceData DataOption::load() const
{
  if (!dir.empty())
    return load_data_set(dir);
  const ProgramDirectory there;
  std::string local_data_dir;
  ReferenceData data;
  if (read_newest_data_set(local_data_dir, data) != RET_SUCCESS)
    throw CouldNotRun("cannot read the data set of the program; choose another with --data=DIR");
  return data;
}
