#pragma once

#include <glibmm/ustring.h>

// The window's title: date, start, site and the program's own title, as far as
// they are known. A part of the date that is 0 was not chosen.
Glib::ustring window_title(int year, int month, int mday, const Glib::ustring& dive_start,
                           const Glib::ustring& site, const Glib::ustring& base_title);
