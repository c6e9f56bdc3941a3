#include "store/flushed-write.h"
#include "store/system-file.h"

#include <fcntl.h>
#include <giomm/error.h>
#include <giomm/file.h>
#include <giomm/fileenumerator.h>
#include <giomm/fileinfo.h>
#include <glib.h>
#include <glibmm/datetime.h>
#include <glibmm/miscutils.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>

namespace {

// The start of the names of temporary files. They are in the parent of the directory of the new
// file, because the program lists all files in that directory as surveys.
const char* const unnamed = ".mavo-survey-unnamed-";

std::string place_of_unnamed(const std::string& path)
{
  return Glib::path_get_dirname(Glib::path_get_dirname(path));
}

// A temporary file. The destructor removes it.
class UnnamedFile
{
public:
  explicit UnnamedFile(const std::string& directory)
      : path(directory + "/" + unnamed + std::to_string(getpid()) + "-" +
             std::to_string(g_random_int())),
        file(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666))
  {
  }
  ~UnnamedFile()
  {
    if (file.number >= 0)
      unlink(path.c_str());
  }
  UnnamedFile(const UnnamedFile&) = delete;
  UnnamedFile& operator=(const UnnamedFile&) = delete;

  const std::string path;
  const Descriptor file; // negative if the file could not be created
};

// Removes temporary files that are older than an hour; a killed program has left them. If their
// program is still running, its link() fails, and it writes the new file in another way.
void remove_leftovers(const std::string& directory)
{
  constexpr std::int64_t hour = 3600;
  const std::int64_t now = Glib::DateTime::create_now_utc().to_unix();
  try {
    const auto files = Gio::File::create_for_path(directory)->enumerate_children(
        G_FILE_ATTRIBUTE_STANDARD_NAME "," G_FILE_ATTRIBUTE_TIME_MODIFIED);
    while (const auto file = files->next_file()) {
      const auto changed =
          static_cast<std::int64_t>(file->get_attribute_uint64(G_FILE_ATTRIBUTE_TIME_MODIFIED));
      if (file->get_name().rfind(unnamed, 0) == 0 && changed + hour < now)
        unlink((directory + "/" + file->get_name()).c_str());
    }
  } catch (const Glib::Error&) { // NOLINT(bugprone-empty-catch): they do no harm
  }
}

} // namespace

bool make_whole_file(const std::string& path, const char* data, std::size_t size)
{
  const std::string directory = place_of_unnamed(path);
  remove_leftovers(directory);
  const UnnamedFile whole(directory);
  if (whole.file.number < 0 || !write_all(whole.file, data, size))
    return false;
  flush_or_throw(whole.file);
  return link(whole.path.c_str(), path.c_str()) == 0;
}

// The file has both names for a short time.
bool rename_to_free_name(const std::string& path, const std::string& target)
{
  if (link(path.c_str(), target.c_str()) != 0)
    return false;
  if (unlink(path.c_str()) == 0)
    return true;
  const int number = errno;
  unlink(target.c_str());
  errno = number;
  return false;
}

std::array<timespec, 2> times_of(const struct stat& status)
{
#ifdef __APPLE__ // has no st_atim and st_mtim
  return {status.st_atimespec, status.st_mtimespec};
#else
  return {status.st_atim, status.st_mtim};
#endif
}
