#pragma once

#include <string>
#include <vector>

#include "cli/data-diff.h"
#include "cli/finding.h"

struct ReferenceData;

// Returns a finding for each saved survey that no longer opens with the new data set, or whose
// meaning changes with it. `path` is a file or a directory, which is searched as survey_paths()
// does. A survey file that cannot be opened results in a warning, and a skipped file in a hint.
// `diff` is the result of compare_data_sets(). Throws CouldNotRun if `path` cannot be read.
std::vector<Finding> find_harmed_surveys(const std::string& path, const ReferenceData& old_data,
                                         const ReferenceData& new_data, const DataDiff& diff);
