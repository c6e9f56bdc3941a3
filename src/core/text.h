#pragma once

#include <glibmm/ustring.h>

#include <cstring>

// The first character of `s` that equals `c`, or the terminating zero if there is none.
const char* find_or_end(const char* s, int c);

#ifdef MAVO_LACKS_STRCHRNUL
// The same under the name that the GNU C library has for it.
inline const char* strchrnul(const char* s, int c)
{
  return find_or_end(s, c);
}
#endif

// A copy without leading and trailing blanks. Only U+0020 counts: tabs and line
// ends are the user's.
template<typename Text>
Text trim_ws(const Text& s);
template<>
Glib::ustring trim_ws(const Glib::ustring& s);
