#pragma once

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "cli/data-faults.h"
#include "cli/known-ids.h"
#include "cli/numbered-ids.h"

// A data set that is checked: its faults, and what the check of one file learns that others
// need.
struct CheckedDataSet {
  explicit CheckedDataSet(std::string directory) : dir(std::move(directory)), faults(dir) {}

  struct SurveyType {
    std::string subregion;
    std::string region;
    bool visible = false;
    long line = 0;
  };
  struct Subregion {
    std::string region;     // the code that the program uses
    bool offered = false;   // one of its survey types is visible
    std::vector<int> types; // ids, in file order
  };
  struct Region {
    bool is_named = false; // by region-info.csv; its files are required then
    KnownIds<std::string> families;
    NumberedIds species;
    NumberedIds viewed_species; // those in some view
  };

  // Whether a code of region-info.csv may be there; see KnownIds::may_have().
  bool may_have_region(const std::string& code) const
  {
    return !survey_types.is_whole || regions.count(code) > 0;
  }
  bool may_have_subregion(const std::string& code) const
  {
    return !survey_types.is_whole || subregions.count(code) > 0;
  }

  const std::string dir;
  DataFaults faults;
  std::set<std::string> files; // the names of those that the program reads

  NumberedIds survey_types;
  std::map<int, SurveyType> survey_type_rows;  // by id, as the last row has it
  std::map<std::string, Subregion> subregions; // by code
  std::map<std::string, Region> regions;       // by code
  NumberedIds habitats;
  NumberedIds views;
  std::map<int, std::string> view_subregions; // the code by view id
};
