#pragma once

#include <cstdint>
#include <string>

namespace Glib {
class ustring;
}

// The decimal number at the start of `text`, as atoi reads it: leading white
// space is skipped, reading stops at the first other character, and text
// without a number is 0. Unlike atoi, a number beyond the range of int has a
// value: the nearest one.
int to_int(const char* text);
int to_int(const std::string& text);
int to_int(const Glib::ustring& text);

// The same number in a wider range, to find out what to_int() had to change.
std::int64_t to_int64(const char* text);
