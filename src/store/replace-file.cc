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

// Cancels a write. Closing or destroying the stream without that would replace the old file with
// the incomplete new one.
void abandon(const Glib::RefPtr<Gio::FileOutputStream>& stream)
{
  const auto cancelled = Gio::Cancellable::create();
  cancelled->cancel();
  try {
    stream->close(cancelled);
  } catch (const Glib::Error&) { // NOLINT(bugprone-empty-catch): reports the cancellation
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

// The previous content of an existing file. The library usually writes a new file and then
// replaces the old one with it. If it cannot do so, because the file has several names or its
// directory is read-only, it truncates the old file and writes to it. A full disk would then
// leave an incomplete file.
class OverwrittenFile
{
public:
  // Reads the content. Does nothing if `path` is not a regular file or is not writable.
  explicit OverwrittenFile(const std::string& path)
      : file(open(path.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK))
  {
    if (file.number >= 0 && fstat(file.number, &status) == 0 && S_ISREG(status.st_mode))
      text = read_all();
  }

  // Restores the content and the time of the last change, from which the entity tag is computed.
  void restore() const
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

// Replaces the file with the library's function. Where possible, this function keeps the old file
// until the new one is complete.
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
      old.restore();
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
  // If make_whole_file() fails, replace_by_library() fails for the same reason and reports it.
  std::string new_etag = is_new && make_whole_file(path, data, size)
                             ? entity_tag(path)
                             : replace_by_library(file, data, size, etag);
  // The caller may now remove another copy. A power failure must not destroy both.
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
