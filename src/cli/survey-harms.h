#pragma once

#include <string>
#include <vector>

#include "cli/data-diff.h"
#include "cli/finding.h"

struct ReferenceData;

// What a new data set does to the saved surveys at `path`, a file or a directory that is
// searched with all below it: a finding for each survey that no longer opens or means
// something else. A file that is no survey gives a warning; a place that cannot be read
// throws std::filesystem::filesystem_error. `diff` is what compare_data_sets() has found.
std::vector<Finding> find_harmed_surveys(const std::string& path, const ReferenceData& old_data,
                                         const ReferenceData& new_data, const DataDiff& diff);
