#include "cli/data-file-names.h"

#include "data/data-file-info.h"
#include "data/region-info.h"

#include <algorithm>

std::vector<std::string> data_file_names(const RegionInfo& regions)
{
  std::vector<std::string> names{DataFileInfo::get_filename(),
                                 "abundance-choices.csv",
                                 "data-definitions.csv",
                                 "data-parameters.csv",
                                 "habitat.csv",
                                 "habitatregion.csv",
                                 "region-info.csv",
                                 "species-view-definitions.csv",
                                 "species-views.csv"};
  for (const auto& code : regions.region_codes)
    for (const char* const end : {"-family-info.csv", "-geog.csv", "-species-info.csv"})
      names.push_back(code.raw() + end);
  std::sort(names.begin(), names.end());
  return names;
}
