#pragma once

#include <string>
#include <vector>

#include "cli/finding.h"

// All faults of the data set in `dir`, by file and line. Without an error among them the
// program can use the set. Throws CouldNotRun if `dir` is no directory that can be read.
std::vector<Finding> check_data_set(const std::string& dir);
