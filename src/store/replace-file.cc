#include "store/replace-file.h"

#include "core/c-resource.h"
#include "core/file-contents.h"
#include "core/file-flush.h"
#include "store/flushed-write.h"
#include "store/system-file.h"

#include <fcntl.h>
#include <giomm/cancellable.h>
#include <giomm/error.h>
#include <giomm/file.h>
#include <giomm/fileoutputstream.h>
#include <glibmm/miscutils.h>
#include <sys/stat.h>
#include <unistd.h>

#include <limits>
#include <optional>
#include <string>

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

// An existing file as it was. The library puts a new file in its place once that is whole;
// but where it may not do so, for the file has several names or its directory is read-only,
// it empties the old one and writes into that. What a full disk then leaves of it is no
// survey, neither the old one nor the new.
class OverwrittenFile
{
public:
  // Knows nothing of what is no regular file, and of what cannot be written to anyway.
  explicit OverwrittenFile(const std::string& path)
      : file(open(path.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK))
  {
    if (file.number >= 0 && fstat(file.number, &status) == 0 && S_ISREG(status.st_mode))
      text = read_all();
  }

  // Also the time of its last change, which its entity tag is made of.
  void put_back() const
  {
    if (!text || text == read_all())
      return;
    if (lseek(file.number, 0, SEEK_SET) == 0 && write_all(file, text->data(), text->size()) &&
        ftruncate(file.number, static_cast<off_t>(text->size())) == 0 && !flush_to_disk(file))
      futimens(file.number, times_of(status).data());
  }

private:
  std::optional<std::string> read_all() const
  {
    return read_bytes(file, std::numeric_limits<std::size_t>::max());
  }

  const Descriptor file;
  struct stat status = {};
  std::optional<std::string> text;
};

// The library's way: an old file stays until the new one is whole.
std::string replace_by_library(const Glib::RefPtr<Gio::File>& file, const char* data,
                               std::size_t size, const std::string& etag)
{
  const bool is_new = !file->query_exists();
  const OverwrittenFile old(file->get_path());
  const auto stream = file->replace(etag);
  try {
    write_and_close(stream, data, size);
    flush_or_throw(file->get_path());
  } catch (...) {
    if (is_new)
      unlink(file->get_path().c_str());
    else
      old.put_back();
    throw;
  }
  return stream->get_etag();
}

} // namespace

std::string replace_file(const std::string& path, const char* data, std::size_t size,
                         const std::string& etag)
{
  const auto file = Gio::File::create_for_path(path);
  const bool is_new = !file->query_exists();
  // The second way meets and reports every other obstacle of the first one.
  std::string new_etag = is_new && make_whole_file(path, data, size)
                             ? entity_tag(path)
                             : replace_by_library(file, data, size, etag);
  // A caller that now removes another copy must not lose both to a power cut.
  try {
    flush_or_throw(Glib::path_get_dirname(path));
  } catch (...) {
    if (is_new)
      unlink(path.c_str());
    throw;
  }
  return new_etag;
}

std::string entity_tag(const std::string& path)
{
  return Gio::File::create_for_path(path)->query_info(G_FILE_ATTRIBUTE_ETAG_VALUE)->get_etag();
}
