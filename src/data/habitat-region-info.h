#pragma once

#include "data/habitat-info.h"

// Reads which habitats each region offers. HabitatInfo uses it during its construction.
class HabitatInfo::HabitatRegionInfo : public FromCSV
{
public:
  // Reads habitatregion.csv in `dir`, which ends in a slash.
  explicit HabitatRegionInfo(const std::string& dir);
  ~HabitatRegionInfo() override;
  RetCode process_line(const std::vector<Glib::ustring>& fields) override;
  RetCode process_headings(const std::vector<Glib::ustring>& the_headings) override;

  std::map<Glib::ustring, std::vector<int>> region_habitat_ids; // see HabitatInfo
};
