#include "store/replace-file.h"

#include <fcntl.h>
#include <giomm/cancellable.h>
#include <giomm/file.h>
#include <giomm/fileoutputstream.h>
#include <glibmm/miscutils.h>
#include <unistd.h>

namespace {

// Ends a write without a result. A stream that is merely closed, or let go,
// would put what has been written so far in the place of the old file.
void abandon(const Glib::RefPtr<Gio::FileOutputStream>& stream)
{
  const auto cancelled = Gio::Cancellable::create();
  cancelled->cancel();
  try {
    stream->close(cancelled);
  } catch (const Glib::Error&) { // NOLINT(bugprone-empty-catch): that it was cancelled
  }
}

void write_and_close(const Glib::RefPtr<Gio::FileOutputStream>& stream, const char* data,
                     std::size_t size)
{
  try {
    gsize written = 0;
    stream->write_all(data, size, written);
  } catch (...) {
    abandon(stream);
    throw;
  }
  stream->close();
}

// Waits until the disk has a file or directory. Some file systems cannot; the
// file is no worse for it.
void flush_to_disk(const std::string& path)
{
  const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0)
    return;
  fsync(descriptor);
  close(descriptor);
}

} // namespace

std::string replace_file(const std::string& path, const char* data, std::size_t size,
                         const std::string& etag)
{
  const auto file = Gio::File::create_for_path(path);
  const bool is_new = !file->query_exists();
  const auto stream = file->replace(etag);
  try {
    write_and_close(stream, data, size);
  } catch (...) {
    if (is_new)
      unlink(path.c_str());
    throw;
  }
  // The library does this only where it replaces: a caller that now removes
  // another copy must not lose both to a power cut.
  if (is_new) {
    flush_to_disk(path);
    flush_to_disk(Glib::path_get_dirname(path));
  }
  return stream->get_etag();
}
