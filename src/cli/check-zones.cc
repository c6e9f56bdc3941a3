#include <limits>
#include <vector>

#include "cli/alike-names.h"
#include "cli/data-checks.h"
#include "cli/name-markup.h"
#include "cli/table-check.h"

namespace {

const char* const expected_headings[] = {"geogid", "name", nullptr};
enum Heading { GEOGID, NAME };

constexpr std::size_t first_level_digits = 1;
constexpr std::size_t second_level_digits = 4;
constexpr std::size_t third_level_digits = 8;

// The code of the zone above; empty for the first level.
std::string parent_of(const std::string& code)
{
  if (code.size() == first_level_digits)
    return {};
  return code.substr(0,
                     code.size() == third_level_digits ? second_level_digits : first_level_digits);
}

// The zones of a region.
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
  void place(const std::string& code);

  // A zone that does not stand below its parent.
  struct Orphan {
    std::string code;
    long line;
  };

  const std::string file;
  KnownIds<std::string> zones;
  std::vector<std::string> open; // the zones that the next one may stand below, outermost first
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
  require_name(text(NAME), "The zone " + code);
  check_name_markup(*this, text(NAME));
  check_duplicate(zones.add(code, line()), "The zone " + code,
                  "it is listed twice, under the name of this row");
  const bool fits =
      *zone > 0 && (code.size() == first_level_digits || code.size() == second_level_digits ||
                    code.size() == third_level_digits);
  if (fits && text(GEOGID).front() != '0')
    place(code);
  else
    fault(DataRule::ZONE_LEVEL, "The code " + quoted(text(GEOGID)) +
                                    " has not one, four or eight digits, without leading zeros: "
                                    "the zone stands at a wrong level, or nobody can choose it");
}

void ZoneCheck::place(const std::string& code)
{
  const std::string parent = parent_of(code);
  names.add(*this, text(NAME), parent);
  while (!open.empty() && open.back() != parent)
    open.pop_back();
  if (open.empty() && !parent.empty())
    orphans.push_back({code, line()});
  open.push_back(code);
}

void ZoneCheck::check_end()
{
  for (const auto& [code, line] : orphans) {
    const std::string parent = parent_of(code);
    if (zones.lines.count(parent) > 0)
      set.faults.add(DataRule::ZONE_ORDER, file, line,
                     "The zone " + code + " does not stand behind " + parent +
                         " and the zones below that: users find it at the level above");
    else if (is_whole())
      set.faults.add(DataRule::ZONE_NO_PARENT, file, line,
                     "The zone " + parent + " above " + code +
                         " is missing: users find this zone at the level above");
  }
}

} // namespace

void check_zones(CheckedDataSet& set, const std::string& region)
{
  ZoneCheck(set, region).run();
}
