#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "cli/finding.h"

struct ReferenceData;

// The differences that members notice when one data set replaces another.
struct DataDiff {
  // One finding for each difference, changed meanings first. An error is an id whose meaning
  // has changed. A warning is a removed thing. All other differences are hints.
  std::vector<Finding> findings;
  // What happens to the things that saved surveys can refer to, by their key
  // (cli/data-things.h). It has only things that are removed or have another meaning.
  std::unordered_map<std::string, std::string> harms;
};

// Returns the differences of two data sets. `old_dir` and `new_dir` are their directories and
// end in a slash. The finding of a removed thing refers to a file of the old set, any other
// finding to a file of the new set. REQUIRES: both data sets are complete.
DataDiff compare_data_sets(const ReferenceData& old_data, const std::string& old_dir,
                           const ReferenceData& new_data, const std::string& new_dir);
