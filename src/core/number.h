#pragma once

#include <cstdint>
#include <string>

namespace Glib {
class ustring;
}

// Returns the decimal number at the start of `text`, as atoi does: skips leading white
// space, stops at the first character that is not part of the number, and returns 0 for a
// text without a number. Unlike atoi, returns the nearest int for a number that is beyond
// the range of int.
int to_int(const char* text);
int to_int(const std::string& text);
int to_int(const Glib::ustring& text);

// Like to_int(), but limits the number to the range of int64. If both functions return
// different values, the number is beyond the range of int.
std::int64_t to_int64(const char* text);
