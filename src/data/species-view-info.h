#pragma once

#include "data/from-csv.h"

class RegionInfo;

// Reads the names of the species views and adds the views to their subregions. Only the code
// that loads or checks a data set uses it.
class SpeciesViewInfo : public FromCSV
{
public:
  // Reads species-view-definitions.csv in `dir`, which ends in a slash. REQUIRES: `regions` is
  // not null and outlives this object.
  SpeciesViewInfo(const std::string& dir, RegionInfo* regions);
  ~SpeciesViewInfo() override;
  RetCode process_line(const std::vector<Glib::ustring>& fields) override;
  RetCode process_headings(const std::vector<Glib::ustring>& the_headings) override;

  std::vector<std::string> view_subregions; // subregion code by view id
  RegionInfo* region_info;                  // its `subregions` receive the views; not owned

private:
  void derive_view_choices();
};
