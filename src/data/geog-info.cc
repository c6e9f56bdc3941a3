#include "data/geog-info.h"

namespace {

const char* const expected_headings[] = {"geogid", "name", nullptr};
enum Heading { GEOGID, NAME };

} // namespace

RegionFishInfo::GeogInfo::GeogInfo(const std::string& dir, RegionFishInfo& info,
                                   const std::string& region_code)
    : fish(&info)
{
  valid = GeogInfo::read_file(dir + region_code + "-geog.csv") == RET_SUCCESS;
}

RegionFishInfo::GeogInfo::~GeogInfo() = default;

RetCode RegionFishInfo::GeogInfo::process_headings(const std::vector<Glib::ustring>& the_headings)
{
  return verify_headings(the_headings, expected_headings);
}

// Accepts any number as a zone id, because it is a key and never an index.
RetCode RegionFishInfo::GeogInfo::process_line(const std::vector<Glib::ustring>& fields)
{
  if (fields.empty())
    return RET_SUCCESS;
  const int id = number(fields, GEOGID);
  // The hint helps because most ids are the largest so far. A new entry gets a copy of the text,
  // because an assignment could allocate spare capacity.
  auto& names = fish->geog_names;
  const std::size_t known = names.size();
  const auto zone = names.try_emplace(names.end(), id, field(fields, NAME));
  if (names.size() == known)
    zone->second = field(fields, NAME);
  fish->geog_ids.push_back(id);
  return RET_SUCCESS;
}
