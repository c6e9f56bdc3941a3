#pragma once

#include <glibmm/ustring.h>

#include <map>
#include <vector>

// Zone codes are paths: a zone's ancestors are those whose code is a proper
// prefix of its own. One of eight digits or more is a complete zone, a site.
constexpr int first_complete_zone = 10'000'000;

// One row of the zone tree, in the order of the tree.
struct ZoneRow {
  int depth; // 0 at the top level
  int id;
  Glib::ustring name;
};

// Whether `ancestor` is a level above `code`: shorter, and its prefix.
bool is_zone_ancestor(const Glib::ustring& ancestor, const Glib::ustring& code);

// Whether a subregion shows the zone: those of the Pacific divide its zones by
// their first digit.
bool is_zone_of_subregion(const Glib::ustring& code, const Glib::ustring& region,
                          const Glib::ustring& subregion);

// The rows for a subregion: all its zones, or those whose name contains the
// trimmed `search` in any case, with all their listed ancestors.
std::vector<ZoneRow> zone_tree_rows(const std::vector<int>& ids,
                                    const std::map<int, Glib::ustring>& names,
                                    const Glib::ustring& region, const Glib::ustring& subregion,
                                    const Glib::ustring& search);

// The zone's name behind those of its first two levels; empty if `code` names
// no zone.
Glib::ustring full_zone_name(const Glib::ustring& code, const std::map<int, Glib::ustring>& names);
