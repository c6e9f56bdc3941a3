#include "data/region-info.h"

#include "core/number.h"
#include "core/report.h"
#include "core/text.h"

#include <cstdio>

namespace {

const char* const expected_headings[] = {"regioncode",     "subregioncode", "regionname",
                                         "subregionname",  "surveytypeid",  "surveytypename",
                                         "hasabundance",   "hasfish",       "hasinverts",
                                         "canhaveinverts", "visible",       nullptr};
enum Heading {
  REGIONCODE,
  SUBREGIONCODE,
  REGIONNAME,
  SUBREGIONNAME,
  SURVEYTYPEID,
  SURVEYTYPENAME,
  HASABUNDANCE,
  HASFISH,
  HASINVERTS,
  CANHAVEINVERTS,
  VISIBLE,
};

bool is_set(const Glib::ustring& flag)
{
  return same_bytes(flag, "1");
}

} // namespace

RegionInfo::RegionInfo(const std::string& dir) : data_dir(dir)
{
  valid = RegionInfo::read_file(dir + "region-info.csv") == RET_SUCCESS;
}

RegionInfo::~RegionInfo() = default;

RetCode RegionInfo::process_headings(const std::vector<Glib::ustring>& the_headings)
{
  return verify_headings(the_headings, expected_headings);
}

RetCode RegionInfo::process_line(const std::vector<Glib::ustring>& fields)
{
  if (fields.empty())
    return derive_tables();
  const int id = to_int(field(fields, SURVEYTYPEID));
  if (!usable_id(id, "surveytypeid"))
    return RET_SUCCESS;
  const auto index = static_cast<std::size_t>(id);
  if (index >= regions.size())
    regions.resize(index + 1);

  Region& region = regions[index];
  region.regioncode = field(fields, REGIONCODE);
  region.subregioncode = field(fields, SUBREGIONCODE);
  region.regionname = field(fields, REGIONNAME);
  region.subregionname = field(fields, SUBREGIONNAME);
  region.surveytypename = field(fields, SURVEYTYPENAME);
  region.surveytypeid = id;
  region.hasabundance = is_set(field(fields, HASABUNDANCE));
  region.hasfish = is_set(field(fields, HASFISH));
  region.hasinverts = is_set(field(fields, HASINVERTS));
  region.canhaveinverts = is_set(field(fields, CANHAVEINVERTS));
  region.visible = is_set(field(fields, VISIBLE));
  subregion_ids[field(fields, SUBREGIONCODE)].push_back(id);
  trace_row(region, fields);
  return RET_SUCCESS;
}

// The look-up of "has_fish" adds a new heading, so no further row has the expected number of
// fields. At these trace levels, a file with more than one row cannot be read. This
// behaviour is old and is kept.
void RegionInfo::trace_row(const Region& region, const std::vector<Glib::ustring>& fields)
{
  const auto text = [&fields](unsigned int column) {
    return column < fields.size() ? fields[column].c_str() : "";
  };
  if (debug_level >= 5) {
    printf("Region: %s/%s: %s, id = %d, has_abund=%d, has_fish=%d (%s), has_inv=%d, "
           "can_have_inv=%d, vis=%d\n",
           region.regioncode.c_str(), region.subregioncode.c_str(), region.surveytypename.c_str(),
           region.surveytypeid, region.hasabundance, region.hasfish, text(column_index["has_fish"]),
           region.hasinverts, region.canhaveinverts, region.visible);
  }
  if (debug_level >= 10) {
    printf("id %d:\n", region.surveytypeid);
    for (const auto& [heading, column] : column_index)
      printf("    %s col %d = \"%s\"\n", heading.c_str(), static_cast<int>(column), text(column));
    printf("\n");
  }
}

RetCode RegionInfo::derive_tables()
{
  Def offered;
  for (const auto& [code, ids] : subregion_ids) {
    derive_survey_types(code, ids);
    // The first survey type determines the names of its subregion.
    const Region& region = regions[static_cast<std::size_t>(ids.front())];
    subregion_codes[region.subregionname] = code;
    subregion_names[code] = region.subregionname;
    subregion_regions[region.subregioncode] = region.regioncode;
    if (!survey_types[code].values.empty()) {
      offered.labels.emplace_back(region.subregionname);
      offered.values.push_back(0);
    }
    const RetCode result = read_region(region.regioncode);
    if (result != RET_SUCCESS)
      return result;
  }
  subregion_list = offered;
  return RET_SUCCESS;
}

void RegionInfo::derive_survey_types(const Glib::ustring& code, const std::vector<int>& ids)
{
  Def visible;
  for (const int id : ids) {
    const Region& region = regions[static_cast<std::size_t>(id)];
    if (region.visible) {
      visible.labels.emplace_back(region.surveytypename);
      visible.values.push_back(id);
    } else {
      hidden_survey_types[code][id] = region.surveytypename;
      if (debug_level > 0)
        printf("Noting non-visible survey subtype %d %s\n", id, region.surveytypename.c_str());
    }
  }
  survey_types[code] = visible;
}

// Reads the region's fish tables unless they have been read for another subregion.
RetCode RegionInfo::read_region(const std::string& region_code)
{
  const auto [fish, is_new] = region_fish.try_emplace(region_code);
  if (!is_new)
    return RET_SUCCESS;
  region_codes.emplace_back(region_code);
  return fish->second.init(data_dir, region_code);
}
