#pragma once

#include <glibmm/ustring.h>

// Returns the window's title: date, start, site and the program's title. Omits unknown parts.
// A part of the date that is 0 is not chosen.
Glib::ustring window_title(int year, int month, int mday, const Glib::ustring& dive_start,
                           const Glib::ustring& site, const Glib::ustring& base_title);
