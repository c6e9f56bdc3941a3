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

// The tables of one data set. A pointer is null until its table has been read. Tables are
// read-only and live until the process ends, so copies of this value stay valid.
struct ReferenceData {
  DataFileInfo* data_file_info = nullptr;
  DataDefs* data_defs = nullptr;
  DataParams* data_params = nullptr;
  RegionInfo* region_info = nullptr;
  HabitatInfo* habitat_info = nullptr;
  SpeciesViews* species_views = nullptr;
  AbundanceChoices* abundance_choices = nullptr;
};

// Reads the data set in `dir`, which ends in a slash. Returns RET_SUCCESS, or RET_FAILURE at
// the first invalid table, which is then the last one that is set.
RetCode read_data_set(const std::string& dir, ReferenceData& data);

// Reads the newer of two data sets: the one in data-files/, which comes with the program, and
// the user's own in data-files/ of `local_data_dir` (see below). First restores the latter if
// an install was interrupted. Prints to standard output which set it reads. Returns the result
// of read_data_set(), or RET_FAILURE if there is no data set.
RetCode read_newest_data_set(std::string& local_data_dir, ReferenceData& data);

// Returns this user's directory of downloaded data, without a trailing slash, and creates it
// if it does not exist. Sets an empty `local_data_dir` to the usual path. Does not report a
// failure to create the directory.
std::string prepare_local_data_dir(std::string& local_data_dir);
