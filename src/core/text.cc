#include "core/text.h"

bool same_bytes(TextBytes one, TextBytes other)
{
  return one.compare(other) == 0;
}

bool begins_with(TextBytes text, TextBytes beginning)
{
  return text.compare(0, beginning.size(), beginning) == 0;
}

bool contains(TextBytes text, TextBytes part)
{
  return text.find(part) != std::string_view::npos;
}

template<>
Glib::ustring trim_ws(const Glib::ustring& s)
{
  // In UTF-8 a blank is one byte, and no other character contains this byte.
  const std::string& bytes = s.raw();
  const std::size_t first = bytes.find_first_not_of(' ');
  if (first == std::string::npos)
    return {};
  return bytes.substr(first, bytes.find_last_not_of(' ') - first + 1);
}

const char* find_or_end(const char* s, int c)
{
  const char* const found = std::strchr(s, c);
  return found ? found : s + std::strlen(s);
}
