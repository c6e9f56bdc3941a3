#pragma once

#include <cstddef>
#include <fstream>
#include <string>

// The largest accepted size of a data file and of one line, in bytes. Real files have less
// than 0.1 MB. Without limits, a damaged or malicious file could exhaust the memory.
constexpr std::size_t largest_data_file = std::size_t{32} << 20;
constexpr std::size_t longest_data_line = std::size_t{1} << 20;

// The largest accepted size of an archive of a data set, in bytes. A real one has less than
// 0.1 MB.
constexpr std::size_t largest_data_archive = std::size_t{32} << 20;

// Opens a data file for reading. Returns a closed stream if the file does not exist, cannot
// be read, or is not a regular file: a directory would look like an empty file, and a pipe
// would block.
std::ifstream open_data_file(const std::string& path);
