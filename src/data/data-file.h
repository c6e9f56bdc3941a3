#pragma once

#include <cstddef>
#include <fstream>
#include <string>

// The most that a data file and one line of it may hold, in bytes. Real files have
// less than 0.1 MB. Without limits a damaged or malicious file could take all memory.
constexpr std::size_t largest_data_file = std::size_t{32} << 20;
constexpr std::size_t longest_data_line = std::size_t{1} << 20;

// The most bytes that an archive of a data set may have. A real one has less than 0.1 MB.
constexpr std::size_t largest_data_archive = std::size_t{32} << 20;

// Opens a data file for reading. The stream is not open if there is no such
// file, if it cannot be read, or if it is anything but a regular file: a
// directory would count as an empty file, and a pipe would be waited for.
std::ifstream open_data_file(const std::string& path);
