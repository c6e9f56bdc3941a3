#pragma once

#include "core/ret-code.h"

#include <string>

class AbundanceChoices;
class DataDefs;
class DataFileInfo;
class DataParams;
class HabitatInfo;
class RegionInfo;
class SpeciesViews;

// The tables of one data set. All are null until they have been read. They are read-only
// then, and live until the process ends, so that copies of this value stay usable.
struct ReferenceData {
  DataFileInfo* data_file_info = nullptr;
  DataDefs* data_defs = nullptr;
  DataParams* data_params = nullptr;
  RegionInfo* region_info = nullptr;
  HabitatInfo* habitat_info = nullptr;
  SpeciesViews* species_views = nullptr;
  AbundanceChoices* abundance_choices = nullptr;
};

// Reads the data set in `dir`, which ends in a slash. Stops at the first table that is not
// valid, which is then the last one that is set; result: RET_SUCCESS or RET_FAILURE.
RetCode read_data_set(const std::string& dir, ReferenceData& data);

// Reads the newer one of two data sets: that which comes with the program, in data-files/,
// and the user's own in data-files/ of `local_data_dir` (see below). Restores the latter
// first if an install was interrupted. Says on standard output which it takes.
// Result as above; RET_FAILURE also if there is no data set.
RetCode read_newest_data_set(std::string& local_data_dir, ReferenceData& data);

// This user's directory of downloaded data, made if need be; no trailing slash. An empty
// `local_data_dir` becomes the usual one. A failure to make it is not reported.
std::string prepare_local_data_dir(std::string& local_data_dir);
