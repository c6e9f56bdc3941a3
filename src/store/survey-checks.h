#pragma once

#include <glibmm/ustring.h>

#include <cstddef>
#include <ctime>

// Judging what was entered, as far as that needs no widget.

// A value with what is wrong about it, if anything, as plain text.
struct CheckedText {
  Glib::ustring text;
  bool good;
};

// A local date against `now`; a part that is 0 was not chosen.
CheckedText check_date(int year, int month, int mday, std::time_t now);

// A zone code, trimmed, with the name that is known for it.
CheckedText check_zone(const Glib::ustring& code, const Glib::ustring& name);

// A temperature as typed, trimmed; empty is good. `unit` is "F", "C" or empty;
// the limits are whole degrees of that unit, inclusive.
CheckedText check_temperature(const Glib::ustring& typed, const Glib::ustring& unit, int min,
                              int max);

// Whether a bottom time has to be confirmed; the limits themselves are usual.
bool is_unusual_bottom_time(int minutes, int confirm_under, int confirm_over);

// One line on a survey of which so many entries are missing or cannot be right.
Glib::ustring verdict_on(std::size_t marked);
