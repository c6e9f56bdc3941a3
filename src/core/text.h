#pragma once

// The C library brings strchrnul (first character that equals c, or the end).
#include <glibmm/ustring.h>

#include <cstring>

// A copy without leading and trailing blanks. Only U+0020 counts: tabs and line
// ends are the user's.
template<typename Text>
Text trim_ws(const Text& s);
template<>
Glib::ustring trim_ws(const Glib::ustring& s);
