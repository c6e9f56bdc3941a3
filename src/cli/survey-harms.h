#pragma once

#include <string>
#include <vector>

#include "cli/data-diff.h"
#include "cli/finding.h"

struct ReferenceData;

// Returns a finding for each saved survey that no longer opens with the new data set, or whose
// meaning changes with it. `path` is a file or a directory, which is searched recursively. A file
// that is not a survey results in a warning. `diff` is the result of compare_data_sets(). Throws
// std::filesystem::filesystem_error if a path cannot be read.
std::vector<Finding> find_harmed_surveys(const std::string& path, const ReferenceData& old_data,
                                         const ReferenceData& new_data, const DataDiff& diff);
