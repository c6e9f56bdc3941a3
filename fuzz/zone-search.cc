// Target: the zone tree. The first line of the input is the search, the second line is "REGION
// SUBREGION", and the other lines are zones as "code,name".
#include "core/number.h"
#include "core/text.h"
#include "data/zone-code.h"
#include "ui/zone-tree.h"

#include <algorithm>
#include <cstdlib>

#include "target.h"

namespace {

struct Zones {
  std::vector<int> ids;
  std::map<int, Glib::ustring> names;
  Glib::ustring region;
  Glib::ustring subregion;
};

Glib::ustring text_of(const std::string& line)
{
  return Glib::ustring(line).make_valid();
}

Zones zones_of(const std::vector<std::string>& lines)
{
  Zones zones;
  if (lines.size() > 1) {
    const auto blank = std::min(lines[1].find(' '), lines[1].size());
    zones.region = text_of(lines[1].substr(0, blank));
    zones.subregion = text_of(lines[1].substr(std::min(blank + 1, lines[1].size())));
  }
  for (std::size_t i = 2; i < lines.size(); ++i) {
    const auto comma = std::min(lines[i].find(','), lines[i].size());
    const int id = to_int(lines[i].substr(0, comma));
    zones.ids.push_back(id);
    if (comma < lines[i].size())
      zones.names[id] = text_of(lines[i].substr(comma + 1));
  }
  return zones;
}

void check_shape(const std::vector<ZoneRow>& rows)
{
  std::vector<std::string> path;
  for (const auto& row : rows) {
    require(row.depth >= 0 && static_cast<std::size_t>(row.depth) <= path.size(),
            "a row is at most one level below the previous row");
    path.resize(static_cast<std::size_t>(row.depth));
    const std::string code = std::to_string(row.id);
    require(path.empty() || is_zone_ancestor(path.back(), code), "a row is below its ancestor");
    path.push_back(code);
  }
}

bool matches(const Glib::ustring& name, const Glib::ustring& search)
{
  return name.lowercase().find(trim_ws(search.lowercase())) != Glib::ustring::npos;
}

std::size_t shown_by_all(const Zones& zones)
{
  return static_cast<std::size_t>(std::count_if(zones.ids.begin(), zones.ids.end(), [&](int id) {
    return is_zone_of_subregion(std::to_string(id), zones.region, zones.subregion);
  }));
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
  const auto lines = lines_of(bytes_of(data, size));
  const Glib::ustring search = text_of(lines.front());
  const Zones zones = zones_of(lines);

  const ZoneTree tree(zones.ids, zones.names, zones.region, zones.subregion);
  const auto all = tree.rows("");
  check_shape(all);
  require(all.size() == shown_by_all(zones), "without a search all zones are shown");

  const auto found = tree.rows(search);
  check_shape(found);
  require(found.size() <= all.size(), "a search shows no more rows than the complete tree");
  const auto is_match = [&](const ZoneRow& row) { return matches(*row.name, search); };
  require(std::count_if(found.begin(), found.end(), is_match) ==
              std::count_if(all.begin(), all.end(), is_match),
          "each match is found once");
  full_zone_name(search, zones.names);
  return 0;
}
