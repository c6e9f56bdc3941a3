#pragma once

#include <glibmm/ustring.h>

#include <cstddef>
#include <ctime>

// Checks of entries that need no widget.

// A value in plain text, followed by a description of its fault if it has one.
struct CheckedText {
  Glib::ustring text;
  bool good; // whether the value has no fault
};

// Checks a local date. It must not be after `now`. A part that is 0 is not chosen.
CheckedText check_date(int year, int month, int mday, std::time_t now);

// Checks a zone code. `code` has no blanks around it; `name` is the name of the zone, or empty
// if the data do not have the zone.
CheckedText check_zone(const Glib::ustring& code, const Glib::ustring& name);

// Checks a typed temperature without blanks around it. Accepts an empty text. `unit` is "F", "C"
// or empty. The limits are in degrees of that unit and are valid values themselves.
CheckedText check_temperature(const Glib::ustring& typed, const Glib::ustring& unit, int min,
                              int max);

// Returns whether the user must confirm a bottom time: if it is below `confirm_under` or above
// `confirm_over`. All numbers are minutes.
bool is_unusual_bottom_time(int minutes, int confirm_under, int confirm_over);

// Returns one line that reports how many entries of a survey are missing or wrong. `marked` is
// their number.
Glib::ustring verdict_on(std::size_t marked);
