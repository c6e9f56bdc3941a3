#pragma once

#include <glibmm/ustring.h>

#include <map>

// Zone codes are paths: the code of an ancestor is a proper prefix of the zone's code.

// Returns whether a code, or an id in decimal, has the length of a complete zone: eight
// characters or more. Only a complete zone can be the site of a survey. Does not look up
// whether the zone exists.
bool is_complete_zone(const Glib::ustring& code);
bool is_complete_zone(int id);

// Returns the names of the zone's ancestors on the first two levels and the name of the zone
// itself, separated by commas. `names` has the names of the region's zones by id. Returns an
// empty text if there is no zone with that code.
Glib::ustring full_zone_name(const Glib::ustring& code, const std::map<int, Glib::ustring>& names);
