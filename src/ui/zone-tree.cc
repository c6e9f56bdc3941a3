#include "ui/zone-tree.h"

#include "core/number.h"
#include "core/report.h"
#include "core/text.h"
#include "data/zone-code.h"

#include <cstdio>
#include <string>
#include <utility>

namespace {

// A zone that may have descendants among the next zones.
struct OpenZone {
  Glib::ustring code;
  std::size_t index;
};

const Glib::ustring& name_of(int id, const std::map<int, Glib::ustring>& names)
{
  static const Glib::ustring nameless;
  const auto found = names.find(id);
  return found == names.end() ? nameless : found->second;
}

// Removes the zones that are not ancestors of `code`.
void close_zones_beside(const Glib::ustring& code, std::vector<OpenZone>& open)
{
  while (!open.empty() && !is_zone_ancestor(open.back().code, code))
    open.pop_back();
}

} // namespace

bool is_zone_ancestor(const Glib::ustring& ancestor, const Glib::ustring& code)
{
  return ancestor.bytes() < code.bytes() && begins_with(code, ancestor);
}

bool is_zone_of_subregion(const Glib::ustring& code, const Glib::ustring& region,
                          const Glib::ustring& subregion)
{
  if (!same_bytes(region, "PAC"))
    return true;
  const bool is_californian = begins_with(code, "4");
  return is_californian != (same_bytes(subregion, "PNW"));
}

ZoneTree::ZoneTree(const std::vector<int>& ids, const std::map<int, Glib::ustring>& names,
                   const Glib::ustring& region, const Glib::ustring& subregion)
{
  zones.reserve(ids.size());
  std::vector<OpenZone> open;
  for (const int id : ids) {
    const Glib::ustring& name = name_of(id, names);
    const Glib::ustring code = std::to_string(id);
    close_zones_beside(code, open);
    const bool is_shown = is_zone_of_subregion(code, region, subregion);
    zones.push_back(
        {id, &name, name.lowercase().raw(), open.empty() ? none : open.back().index, is_shown});
    if (is_shown)
      open.push_back({code, zones.size() - 1});
  }
}

// The state of one search, with the rows found so far.
class ZoneTree::Search
{
public:
  Search(const std::vector<Zone>& all_zones, std::string lower_case_search)
      : zones(all_zones), wanted(std::move(lower_case_search)), depths(zones.size(), no_row)
  {
  }

  void add_matches()
  {
    for (std::size_t i = 0; i < zones.size(); ++i)
      if (zones[i].is_of_subregion && matches(zones[i]))
        add(i);
  }

  std::vector<ZoneRow> rows;

private:
  bool matches(const Zone& zone) const { return contains(zone.lower_case_name, wanted); }

  // A complete zone that matches has no children: a longer code becomes a child of the level
  // above. A complete zone that does not match can be an ancestor of a match.
  std::size_t ancestor_of(std::size_t zone) const
  {
    do
      zone = zones[zone].ancestor;
    while (zone != none && is_complete_zone(zones[zone].id) && matches(zones[zone]));
    return zone;
  }

  // Adds the zone's row after those of its ancestors.
  void add(std::size_t zone)
  {
    const std::size_t ancestor = ancestor_of(zone);
    if (ancestor != none && depths[ancestor] == no_row)
      add(ancestor);
    depths[zone] = ancestor == none ? 0 : depths[ancestor] + 1;
    rows.push_back({depths[zone], zones[zone].id, zones[zone].name});
  }

  static constexpr int no_row = -1;
  const std::vector<Zone>& zones;
  std::string wanted;
  std::vector<int> depths; // the depths of the rows, by the index of the zone
};

std::vector<ZoneRow> ZoneTree::rows(const Glib::ustring& search) const
{
  if (debug_level >= 9)
    for (const auto& zone : zones)
      std::printf("%d: %s\n", zone.id, zone.name->c_str());
  Search found(zones, trim_ws(search.lowercase()).raw());
  found.add_matches();
  return found.rows;
}
