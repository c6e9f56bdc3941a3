#include "data/family-info.h"

#include <cstdio>

namespace {

const char* const expected_headings[] = {"familyid", "scientificname", "commonname", nullptr};
enum Heading { FAMILYID, SCIENTIFICNAME, COMMONNAME };

} // namespace

RegionFishInfo::FamilyInfo::FamilyInfo(const std::string& dir, RegionFishInfo& info,
                                       const std::string& region_code)
    : fish(&info)
{
  valid = FamilyInfo::read_file(dir + region_code + "-family-info.csv") == RET_SUCCESS;
}

RegionFishInfo::FamilyInfo::~FamilyInfo() = default;

RetCode RegionFishInfo::FamilyInfo::process_headings(const std::vector<Glib::ustring>& the_headings)
{
  return verify_headings(the_headings, expected_headings);
}

RetCode RegionFishInfo::FamilyInfo::process_line(const std::vector<Glib::ustring>& fields)
{
  if (fields.empty())
    return RET_SUCCESS;
  const Glib::ustring& id = field(fields, FAMILYID);
  fish->family_ids.push_back(id);

  // The hint avoids most comparisons by collation, because files are ordered by id.
  Family& family = fish->families.try_emplace(fish->families.end(), id)->second;
  family.id = id;
  family.scientificname = field(fields, SCIENTIFICNAME);
  family.commonname = field(fields, COMMONNAME);
  if (family.scientificname.empty() && family.commonname.empty()) {
    printf("Warning: %s family %s has no name!\n", fish->region.c_str(), family.id.c_str());
    family.commonname = "Unnamed family " + id;
  }
  return RET_SUCCESS;
}
