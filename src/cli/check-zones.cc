#include <limits>
#include <sstream>
#include <vector>

#include "cli/alike-names.h"
#include "cli/data-checks.h"
#include "cli/name-markup.h"
#include "cli/table-check.h"

namespace {

const char* const expected_headings[] = {"geogid", "name", nullptr};
enum Heading { GEOGID, NAME };

constexpr int no_zone = 0; // the parent of zones of the first level

bool is_first_level(int zone)
{
  return zone >= 1 && zone <= 9;
}
bool is_second_level(int zone)
{
  return zone >= 1'000 && zone <= 9'999;
}
bool is_third_level(int zone)
{
  return zone >= 10'000'000 && zone <= 99'999'999;
}

// Returns the parent of a zone. The digits of the parent are the first digits of the zone.
int parent_of(int zone)
{
  if (is_third_level(zone))
    return zone / 10'000;
  return is_second_level(zone) ? zone / 1'000 : no_zone;
}

// Checks the zones of a region.
class ZoneCheck : public TableCheck
{
public:
  ZoneCheck(CheckedDataSet& the_set, const std::string& region)
      : TableCheck(the_set, region + "-geog.csv", expected_headings), file(region + "-geog.csv")
  {
  }

private:
  void check_row() override;
  void check_end() override;
  void place(int zone);

  // A zone that does not follow its parent and the other zones in it.
  struct Orphan {
    int zone;
    long line;
  };

  const std::string file;
  KnownIds<int> zones;
  std::vector<int> open; // the possible parents of the next zone, outermost first
  std::vector<Orphan> orphans;
  AlikeNames names{"zone", AlikeNames::Equal::FAULT};
};

void ZoneCheck::check_row()
{
  const auto zone =
      number(GEOGID, std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
  if (!zone)
    return;
  const std::string code = std::to_string(*zone);
  require_name(text(NAME), "The zone", code);
  check_name_markup(*this, text(NAME));
  check_duplicate(zones.add(*zone, line()), "The zone", code,
                  "users see it twice, with the name of this row");
  const bool fits = is_first_level(*zone) || is_second_level(*zone) || is_third_level(*zone);
  if (fits && text(GEOGID).front() != '0') {
    place(*zone);
  } else {
    fault(DataRule::ZONE_LEVEL, "The code " + quoted(text(GEOGID)) +
                                    " does not have one, four or eight digits without leading "
                                    "zeros: the zone appears at the wrong level, or users "
                                    "cannot choose it");
  }
}

void ZoneCheck::place(int zone)
{
  const int parent = parent_of(zone);
  names.add(*this, text(NAME), std::to_string(parent));
  while (!open.empty() && open.back() != parent)
    open.pop_back();
  if (open.empty() && parent != no_zone)
    orphans.push_back({zone, line()});
  open.push_back(zone);
}

void ZoneCheck::check_end()
{
  for (const auto& [zone, line] : orphans) {
    const int parent = parent_of(zone);
    std::ostringstream message;
    if (zones.lines.count(parent) > 0) {
      message << "The zone " << zone << " does not follow its parent " << parent
              << " and the other zones in it: users find the zone at the level above";
      set.faults.add(DataRule::ZONE_ORDER, file, line, message.str());
    } else if (is_complete()) {
      message << "The parent " << parent << " of the zone " << zone
              << " is missing: users find the zone at the level above";
      set.faults.add(DataRule::ZONE_NO_PARENT, file, line, message.str());
    }
  }
}

} // namespace

void check_zones(CheckedDataSet& set, const std::string& region)
{
  ZoneCheck(set, region).run();
}
