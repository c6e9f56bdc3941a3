#pragma once

#include <string>
#include <vector>

class RegionInfo;

// Returns the names of all files of a data set with these regions, in byte order.
std::vector<std::string> data_file_names(const RegionInfo& regions);
