#include "data/file-tree.h"

#include "core/c-resource.h"
#include "core/file-flush.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

bool is_there(const fs::path& path)
{
  std::error_code ignored;
  return fs::exists(fs::symlink_status(path, ignored));
}

bool is_own_directory(const fs::path& path)
{
  struct stat status = {};
  return lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == geteuid();
}

void open_up(const fs::path& path)
{
  std::error_code ignored; // the next operation on the directory reports it
  if (is_own_directory(path))
    fs::permissions(path, fs::perms::owner_all, fs::perm_options::add, ignored);
}

namespace {

void open_up_tree(const fs::path& path)
{
  open_up(path);
  std::error_code failure;
  for (fs::directory_iterator entry(path, failure), end; !failure && entry != end;
       entry.increment(failure)) {
    std::error_code ignored;
    if (fs::is_directory(entry->symlink_status(ignored)))
      open_up_tree(entry->path());
  }
}

} // namespace

void remove_tree(const fs::path& path)
{
  std::error_code failure;
  fs::remove_all(path, failure);
  if (!failure)
    return;
  open_up_tree(path);
  fs::remove_all(path, failure);
}

std::vector<fs::path> names_in(const fs::path& directory, std::error_code& failure)
{
  std::vector<fs::path> names;
  for (fs::directory_iterator entry(directory, failure), end; !failure && entry != end;
       entry.increment(failure))
    names.push_back(entry->path().filename());
  return names;
}

namespace {

// Flushes a file or directory. Follows no link and waits for no pipe. Skips what cannot be
// opened for reading.
std::error_code flush_path(const fs::path& path)
{
  const Descriptor file(open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  return file.number >= 0 ? flush_to_disk(file) : std::error_code();
}

} // namespace

std::error_code flush_tree(const fs::path& directory)
{
  std::error_code failure;
  if (!fs::is_directory(fs::symlink_status(directory, failure)))
    return {};
  const auto readable = fs::directory_options::skip_permission_denied;
  for (fs::recursive_directory_iterator entry(directory, readable, failure), end;
       !failure && entry != end; entry.increment(failure)) {
    failure = flush_path(entry->path());
    if (failure)
      return failure;
  }
  return failure ? failure : flush_path(directory);
}
