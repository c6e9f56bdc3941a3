#include "data/region-fish-info.h"

#include "core/report.h"
#include "data/family-info.h"
#include "data/geog-info.h"
#include "data/species-info.h"

#include <cstdio>

RetCode RegionFishInfo::init(const std::string& dir, const std::string& region_code)
{
  region = region_code;
  if (debug_level >= 4)
    printf("Starting to read family & species info for %s\n", region.c_str());
  // Families first, because the species refer to them.
  if (!FamilyInfo(dir, *this, region).is_valid() || !SpeciesInfo(dir, *this, region).is_valid() ||
      !GeogInfo(dir, *this, region).is_valid())
    return RET_FAILURE;

  if (debug_level >= 4) {
    printf("Read family (%d), species (%d), and geog (%d) info for %s\n",
           static_cast<int>(families.size()), static_cast<int>(species.size()),
           static_cast<int>(geog_ids.size()), region.c_str());
  }
  initialised = true;
  return RET_SUCCESS;
}

const RegionFishInfo::Species* RegionFishInfo::find_species(int id) const
{
  if (id < 0 || static_cast<std::size_t>(id) >= species.size())
    return nullptr;
  const Species& found = species[static_cast<std::size_t>(id)];
  return found.speciesid == id ? &found : nullptr;
}
