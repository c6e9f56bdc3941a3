#pragma once

#include <glibmm/ustring.h>

#include <cstring>
#include <string>
#include <string_view>

// The bytes of a text of any type, for the comparisons below. REQUIRES: the text outlives this
// object.
struct TextBytes : std::string_view {
  TextBytes(const char* text) : std::string_view(text) {}
  TextBytes(std::string_view text) : std::string_view(text) {}
  TextBytes(const std::string& text) : std::string_view(text) {}
  TextBytes(const Glib::ustring& text) : std::string_view(text.raw()) {}
};

// Compare texts by their bytes. == and < of Glib::ustring collate in the locale instead. They are
// slower, and different texts can be equal to them.
bool same_bytes(TextBytes one, TextBytes other);
bool begins_with(TextBytes text, TextBytes beginning);
bool contains(TextBytes text, TextBytes part);

// Returns a pointer to the first `c` in `s`, or to the terminating zero if there is none.
const char* find_or_end(const char* s, int c);

#ifdef MAVO_LACKS_STRCHRNUL
// The GNU C library's name of find_or_end().
inline const char* strchrnul(const char* s, int c)
{
  return find_or_end(s, c);
}
#endif

// Returns a copy without leading and trailing blanks. Only U+0020 is a blank: the user may
// have typed tabs and line ends on purpose.
template<typename Text>
Text trim_ws(const Text& s);
template<>
Glib::ustring trim_ws(const Glib::ustring& s);
