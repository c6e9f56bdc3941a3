#pragma once

#include <glibmm/ustring.h>

#include <map>

// The zone's name behind those of its first two levels; empty if `code` names
// no zone.
Glib::ustring full_zone_name(const Glib::ustring& code, const std::map<int, Glib::ustring>& names);
