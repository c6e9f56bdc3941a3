#pragma once

#include <string>
#include <vector>

#include "cli/finding.h"

// Returns all faults of the data set in `dir` in the order of file and line. The program can
// use the set if none of them is an error. Throws CouldNotRun if `dir` is not a readable
// directory.
std::vector<Finding> check_data_set(const std::string& dir);
