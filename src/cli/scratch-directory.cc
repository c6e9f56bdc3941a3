#include "cli/scratch-directory.h"

#include "data/file-tree.h"

#include <cerrno>
#include <cstdlib>
#include <string>
#include <system_error>

namespace fs = std::filesystem;

namespace {

// Returns the directory that exit() must remove, or an empty path if there is none. The path is
// never destroyed, because exit() could destroy it before remove_left_directory() uses it.
fs::path& left_directory()
{
  static auto& path = *new fs::path();
  return path;
}

void remove_left_directory()
{
  if (!left_directory().empty())
    remove_tree(left_directory());
  left_directory().clear();
}

fs::path make_directory()
{
  static const int registered = std::atexit(&remove_left_directory);
  std::string name = (fs::temp_directory_path() / "mavo-data-XXXXXX").string();
  if (registered != 0 || !mkdtemp(name.data()))
    throw fs::filesystem_error("cannot create a directory", name,
                               std::error_code(errno, std::generic_category()));
  left_directory() = name;
  return name;
}

} // namespace

ScratchDirectory::ScratchDirectory() : path(make_directory()) {}

ScratchDirectory::~ScratchDirectory()
{
  remove_left_directory();
}
