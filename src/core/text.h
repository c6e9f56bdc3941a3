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

// These functions compare texts by their bytes. The operators == and < of Glib::ustring use the
// collation of the locale instead: they are slower, and they can treat different texts as equal.

// Returns whether both texts have the same bytes.
bool same_bytes(TextBytes one, TextBytes other);
// Returns whether `text` begins with `beginning`.
bool begins_with(TextBytes text, TextBytes beginning);
// Returns whether `part` occurs in `text`.
bool contains(TextBytes text, TextBytes part);

// Returns a pointer to the first `c` in `s`, or to the terminating zero if there is none.
const char* find_or_end(const char* s, int c);

#ifdef MAVO_LACKS_STRCHRNUL
// The name of find_or_end() in the GNU C library.
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
