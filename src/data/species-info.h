#pragma once

#include "data/from-csv.h"
#include "data/region-fish-info.h"

#include <optional>
#include <unordered_map>

// Reads the rows of a region's species file into its tables.
class RegionFishInfo::SpeciesInfo : public FromCSV
{
public:
  // Reads <region_code>-species-info.csv in `dir`, which ends in a slash.
  SpeciesInfo(const std::string& dir, RegionFishInfo& info, const std::string& region_code);
  ~SpeciesInfo() override;
  RetCode process_line(const std::vector<Glib::ustring>& fields) override;
  RetCode process_headings(const std::vector<Glib::ustring>& the_headings) override;

  RegionFishInfo* fish; // receives the rows; not owned

private:
  void settle_family(Species& row);
  Family& find_family(const std::string& id);

  std::optional<unsigned int> spanish_column; // this column is optional
  // The entries of RegionFishInfo::families by id. That map compares ids by collation, which
  // would take most of the time of reading a species file.
  std::unordered_map<std::string, Family*> families_by_id;
};
