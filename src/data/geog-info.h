#pragma once

#include "data/from-csv.h"
#include "data/region-fish-info.h"

// Reads the rows of a region's zone file into its tables.
class RegionFishInfo::GeogInfo : public FromCSV
{
public:
  // Reads <region_code>-geog.csv in `dir`, which ends in a slash.
  GeogInfo(const std::string& dir, RegionFishInfo& info, const std::string& region_code);
  ~GeogInfo() override;
  RetCode process_line(const std::vector<Glib::ustring>& fields) override;
  RetCode process_headings(const std::vector<Glib::ustring>& the_headings) override;

  RegionFishInfo* fish; // receives the rows; not owned
};
