#include "core/text.h"

template<>
Glib::ustring trim_ws(const Glib::ustring& s)
{
  // A blank is one byte, and no byte of another character looks like one.
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
