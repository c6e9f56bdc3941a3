#pragma once

#include "data/from-csv.h"

#include <set>

// The habitats, and the codes under which each region offers them.
class HabitatInfo : public FromCSV
{
public:
  // Reads habitatregion.csv and habitat.csv in `dir`, which ends in a slash.
  explicit HabitatInfo(const std::string& dir);
  ~HabitatInfo() override;
  RetCode process_line(const std::vector<Glib::ustring>& fields) override;
  RetCode process_headings(const std::vector<Glib::ustring>& the_headings) override;

  class HabitatRegionInfo; // reads habitatregion.csv

  std::vector<Glib::ustring> names;        // by habitat id
  std::vector<Glib::ustring> descriptions; // by habitat id
  // By region code: the habitat id of each of the region's habitat codes, or -1 if a code is
  // not used.
  std::map<Glib::ustring, std::vector<int>> region_habitat_ids;
  std::map<Glib::ustring, Def> region_habitats; // by region code: names and habitat codes

private:
  void derive_region_habitats();
  void drop_undefined_habitats();

  std::set<int> defined_ids; // the ids that habitat.csv has; `names` has gaps
};
