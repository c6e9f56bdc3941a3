#include "data/habitat-info.h"

#include "core/number.h"
#include "core/report.h"
#include "data/habitat-region-info.h"

#include <cstdio>

namespace {

const char* const expected_headings[] = {"habitatid", "habitatname", "habitatdescr", nullptr};
enum Heading { HABITATID, HABITATNAME, HABITATDESCR };

} // namespace

HabitatInfo::HabitatInfo(const std::string& dir)
{
  HabitatRegionInfo by_region(dir);
  if (!by_region.is_valid())
    return;
  region_habitat_ids.swap(by_region.region_habitat_ids);
  valid = HabitatInfo::read_file(dir + "habitat.csv") == RET_SUCCESS;
}

HabitatInfo::~HabitatInfo() = default;

RetCode HabitatInfo::process_headings(const std::vector<Glib::ustring>& the_headings)
{
  return verify_headings(the_headings, expected_headings);
}

RetCode HabitatInfo::process_line(const std::vector<Glib::ustring>& fields)
{
  if (fields.empty()) {
    derive_region_habitats();
    return RET_SUCCESS;
  }
  const int id = to_int(field(fields, HABITATID));
  if (!usable_id(id, "habitatid"))
    return RET_SUCCESS;
  const auto index = static_cast<std::size_t>(id);
  if (index >= names.size()) {
    names.resize(index + 1);
    descriptions.resize(index + 1);
  }
  names[index] = field(fields, HABITATNAME);
  descriptions[index] = field(fields, HABITATDESCR);
  defined_ids.insert(id);
  return RET_SUCCESS;
}

void HabitatInfo::derive_region_habitats()
{
  drop_undefined_habitats();
  for (const auto& [region, ids] : region_habitat_ids) {
    Def choices;
    for (std::size_t code = 0; code < ids.size(); ++code) {
      if (ids[code] >= 0) {
        choices.labels.push_back(names[static_cast<std::size_t>(ids[code])]);
        choices.values.push_back(static_cast<int>(code));
      }
    }
    region_habitats[region] = choices;
  }
}

// Marks the codes of habitats that habitat.csv lacks as unused.
void HabitatInfo::drop_undefined_habitats()
{
  for (auto& [region, ids] : region_habitat_ids) {
    for (int& id : ids) {
      if (id >= 0 && defined_ids.count(id) == 0) {
        if (debug_level >= -1)
          printf("Region %s habitat id %d is not defined!\n", region.c_str(), id);
        id = -1;
      }
    }
  }
}
