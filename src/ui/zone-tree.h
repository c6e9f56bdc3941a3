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
  const Glib::ustring* name; // owned by the reference data
};

// Returns whether `ancestor` is a proper prefix of `code`.
bool is_zone_ancestor(const Glib::ustring& ancestor, const Glib::ustring& code);

// Returns whether a subregion shows the zone. The subregions of the Pacific divide its zones
// by their first digit.
bool is_zone_of_subregion(const Glib::ustring& code, const Glib::ustring& region,
                          const Glib::ustring& subregion);

// The zones of a region as one of its subregions shows them. The constructor computes what all
// searches need: the ancestor of each zone and its name in lower case.
class ZoneTree
{
public:
  ZoneTree() = default; // without zones
  // REQUIRES: `names` outlives the tree and its rows.
  ZoneTree(const std::vector<int>& ids, const std::map<int, Glib::ustring>& names,
           const Glib::ustring& region, const Glib::ustring& subregion);

  // Returns the zones whose name contains the trimmed `search`, ignoring case, with all their
  // listed ancestors. Returns all zones if `search` is empty.
  std::vector<ZoneRow> rows(const Glib::ustring& search) const;

private:
  struct Zone {
    int id;
    const Glib::ustring* name;
    std::string lower_case_name;
    std::size_t ancestor; // the index of the nearest ancestor that can be shown, or `none`
    bool is_of_subregion;
  };
  static constexpr auto none = static_cast<std::size_t>(-1);
  class Search;

  std::vector<Zone> zones; // ancestors first
};
