#include "store/flushed-write.h"

#include "core/file-flush.h"

#include <fcntl.h>
#include <gio/gio.h>
#include <giomm/error.h>
#include <glibmm/stringutils.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

bool write_all(const Descriptor& file, const char* data, std::size_t size)
{
  while (size > 0) {
    const ssize_t written = write(file.number, data, size);
    if (written < 0 && errno != EINTR)
      return false;
    if (written > 0) {
      data += written;
      size -= static_cast<std::size_t>(written);
    }
  }
  return true;
}

void flush_or_throw(const Descriptor& file)
{
  if (const std::error_code loss = flush_to_disk(file))
    throw Gio::Error(static_cast<Gio::Error::Code>(g_io_error_from_errno(loss.value())),
                     "Error writing to file: " + Glib::strerror(loss.value()));
}

void flush_or_throw(const std::string& path)
{
  const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (file.number >= 0)
    flush_or_throw(file);
}
