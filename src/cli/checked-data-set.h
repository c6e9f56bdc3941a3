#pragma once

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "cli/data-faults.h"
#include "cli/known-ids.h"
#include "cli/numbered-ids.h"

// The state of a check of a data set: the faults so far, and the facts from one file that the
// checks of other files need.
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
    bool offered = false;   // whether one of its survey types is visible
    std::vector<int> types; // ids, in file order
  };
  struct Region {
    bool is_named = false; // whether region-info.csv has it, so that its files are required
    KnownIds<std::string> families;
    NumberedIds species;
    NumberedIds viewed_species; // the species that are in a view
  };

  // Return whether region-info.csv may define the code; see KnownIds::may_have().
  bool may_have_region(const std::string& code) const
  {
    return !survey_types.is_complete || regions.count(code) > 0;
  }
  bool may_have_subregion(const std::string& code) const
  {
    return !survey_types.is_complete || subregions.count(code) > 0;
  }

  const std::string dir; // as the user wrote it
  DataFaults faults;
  std::set<std::string> files; // the names of the files that the program reads

  NumberedIds survey_types;
  std::map<int, SurveyType> survey_type_rows;  // by id; the last row with an id counts
  std::map<std::string, Subregion> subregions; // by code
  std::map<std::string, Region> regions;       // by code
  NumberedIds habitats;
  NumberedIds views;
  std::map<int, std::string> view_subregions; // the subregion code by view id
};
