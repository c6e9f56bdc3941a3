#include "core/file-contents.h"

#include "core/c-resource.h"

#include <giomm/file.h>

Glib::ustring read_file_contents(const std::string& path)
{
  char* contents = nullptr;
  gsize length = 0;
  const bool loaded = Gio::File::create_for_path(path)->load_contents(contents, length);
  const GMemory<char> owner(contents);
  if (!loaded)
    return {};
  return std::string(contents, length);
}
