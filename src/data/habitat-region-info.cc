#include "data/habitat-region-info.h"

#include "core/number.h"

namespace {

const char* const expected_headings[] = {"regioncode", "habitat", "habitatid", nullptr};
enum Heading { REGIONCODE, HABITAT, HABITATID };

} // namespace

HabitatInfo::HabitatRegionInfo::HabitatRegionInfo(const std::string& dir)
{
  valid = HabitatRegionInfo::read_file(dir + "habitatregion.csv") == RET_SUCCESS;
}

HabitatInfo::HabitatRegionInfo::~HabitatRegionInfo() = default;

RetCode
HabitatInfo::HabitatRegionInfo::process_headings(const std::vector<Glib::ustring>& the_headings)
{
  return verify_headings(the_headings, expected_headings);
}

RetCode HabitatInfo::HabitatRegionInfo::process_line(const std::vector<Glib::ustring>& fields)
{
  if (fields.empty())
    return RET_SUCCESS;
  const int code = to_int(field(fields, HABITAT));
  const int id = to_int(field(fields, HABITATID));
  if (!usable_id(code, "habitat") || !usable_id(id, "habitatid"))
    return RET_SUCCESS;

  std::vector<int>& ids = region_habitat_ids[field(fields, REGIONCODE)];
  const auto position = static_cast<std::size_t>(code);
  if (position >= ids.size()) {
    if (!allow_gap(position - ids.size()))
      return RET_SUCCESS;
    ids.resize(position + 1, -1);
  }
  ids[position] = id;
  return RET_SUCCESS;
}
