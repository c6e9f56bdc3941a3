#pragma once

#include <string>

// Returns the data set in `dir` as a tar file compressed with bzip2, with all files in a
// directory "data-files". Throws a Refusal if that fails.
std::string pack_data_set(const std::string& dir);

// Returns a damaged form of `dir`'s archive. `damage` is "truncated", "empty", "not-bzip2",
// "not-tar", or "FILE:" and the path of a file, whose contents this returns unchanged. Throws a
// Refusal if that fails.
std::string damaged_archive(const std::string& dir, const std::string& damage);
