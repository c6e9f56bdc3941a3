#pragma once

#include <string>
#include <vector>

class RegionInfo;

// The names of all files that belong to a data set with these regions, in byte order.
std::vector<std::string> data_file_names(const RegionInfo& regions);
