#include "store/flushed-write.h"
#include "store/system-file.h"

#include <fcntl.h>
#include <glibmm/miscutils.h>
#include <unistd.h>

#include <cstdio>

bool make_whole_file(const std::string& path, const char* data, std::size_t size)
{
  const std::string directory = Glib::path_get_dirname(path);
  const Descriptor file(open(directory.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0666));
  if (file.number < 0 || !write_all(file, data, size))
    return false;
  flush_or_throw(file);
  const std::string nameless = "/proc/self/fd/" + std::to_string(file.number);
  return linkat(AT_FDCWD, nameless.c_str(), AT_FDCWD, path.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

bool rename_to_free_name(const std::string& path, const std::string& target)
{
  return renameat2(AT_FDCWD, path.c_str(), AT_FDCWD, target.c_str(), RENAME_NOREPLACE) == 0;
}

std::array<timespec, 2> times_of(const struct stat& status)
{
  return {status.st_atim, status.st_mtim};
}
