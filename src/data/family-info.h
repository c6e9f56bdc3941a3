#pragma once

#include "data/from-csv.h"
#include "data/region-fish-info.h"

// Reads the rows of a region's family file into its tables.
class RegionFishInfo::FamilyInfo : public FromCSV
{
public:
  // Reads <region_code>-family-info.csv in `dir`, which ends in a slash.
  FamilyInfo(const std::string& dir, RegionFishInfo& info, const std::string& region_code);
  ~FamilyInfo() override;
  RetCode process_line(const std::vector<Glib::ustring>& fields) override;
  RetCode process_headings(const std::vector<Glib::ustring>& the_headings) override;

  RegionFishInfo* fish; // receives the rows; not owned
};
