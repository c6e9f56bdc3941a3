#include "core/file-contents.h"

#include <giomm/file.h>

#include <algorithm>
#include <array>
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
  std::string contents;
  std::array<char, 65536> block;
  while (contents.size() < most) {
    const std::size_t wanted = std::min(block.size(), most - contents.size());
    const ssize_t count =
        pread(file.number, block.data(), wanted, static_cast<off_t>(contents.size()));
    if (count == 0)
      break;
    if (count > 0)
      contents.append(block.data(), static_cast<std::size_t>(count));
    else if (errno != EINTR)
      return std::nullopt;
  }
  return contents;
}
