#include "core/file-contents.h"

#include <giomm/file.h>

#include <algorithm>
#include <cerrno>

std::optional<std::string> load_file(const std::string& path)
{
  char* contents = nullptr;
  gsize length = 0;
  const bool loaded = Gio::File::create_for_path(path)->load_contents(contents, length);
  const GMemory<char> owner(contents);
  if (!loaded)
    return std::nullopt;
  return std::string(contents, length);
}

Glib::ustring read_file_contents(const std::string& path)
{
  return load_file(path).value_or("");
}

std::optional<std::string> read_bytes(const Descriptor& file, std::size_t most)
{
  constexpr std::size_t block = 65536;
  std::string contents;
  std::size_t length = 0;
  while (length < most) {
    contents.resize(length + std::min(block, most - length));
    const ssize_t count = pread(file.number, contents.data() + length, contents.size() - length,
                                static_cast<off_t>(length));
    if (count == 0)
      break;
    if (count > 0)
      length += static_cast<std::size_t>(count);
    else if (errno != EINTR)
      return std::nullopt;
  }
  contents.resize(length);
  return contents;
}
