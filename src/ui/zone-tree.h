#pragma once

#include <glibmm/ustring.h>

#include <cstddef>
#include <map>
#include <string>
#include <vector>

// One row of the zone tree, in the order of the tree.
struct ZoneRow {
  int depth; // 0 at the top level
  int id;
  const Glib::ustring* name; // of the tree's tables
};

// Whether `ancestor` is a level above `code`: shorter, and its prefix.
bool is_zone_ancestor(const Glib::ustring& ancestor, const Glib::ustring& code);

// Whether a subregion shows the zone: those of the Pacific divide its zones by
// their first digit.
bool is_zone_of_subregion(const Glib::ustring& code, const Glib::ustring& region,
                          const Glib::ustring& subregion);

// The zones of a region as one of its subregions shows them. What all searches have
// in common is worked out once: what each zone hangs from, and its name in lower case.
class ZoneTree
{
public:
  ZoneTree() = default; // without zones
  // `names` stay with the caller, for as long as the tree and its rows are used.
  ZoneTree(const std::vector<int>& ids, const std::map<int, Glib::ustring>& names,
           const Glib::ustring& region, const Glib::ustring& subregion);

  // All zones, or those whose name contains the trimmed `search` in any case, with
  // all their listed ancestors.
  std::vector<ZoneRow> rows(const Glib::ustring& search) const;

private:
  struct Zone {
    int id;
    const Glib::ustring* name;
    std::string lower_case_name;
    std::size_t ancestor; // index of the nearest one that can be shown, or `none`
    bool is_of_subregion;
  };
  static constexpr auto none = static_cast<std::size_t>(-1);
  class Search;

  std::vector<Zone> zones; // ancestors first
};
