#pragma once

#include <fstream>
#include <string>

// Opens a data file for reading. The stream is not open if there is no such
// file, if it cannot be read, or if it is anything but a regular file: a
// directory would count as an empty file, and a pipe would be waited for.
std::ifstream open_data_file(const std::string& path);
