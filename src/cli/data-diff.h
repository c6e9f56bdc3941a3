#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "cli/finding.h"

struct ReferenceData;

// What members notice when one data set takes the place of another.
struct DataDiff {
  // One finding for each difference, changed meanings first. Errors are ids that mean
  // another thing than before, warnings are losses, hints all else.
  std::vector<Finding> findings;
  // By the key of a thing (cli/data-things.h) that saved surveys can name: what happens to
  // it. Only things that are gone or mean something else are in it.
  std::unordered_map<std::string, std::string> harms;
};

// Compares two complete data sets, which have been read from these directories; both end in a
// slash. What is gone is found in a file of the old set, all else in one of the new set.
DataDiff compare_data_sets(const ReferenceData& old_data, const std::string& old_dir,
                           const ReferenceData& new_data, const std::string& new_dir);
