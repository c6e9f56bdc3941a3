#pragma once

#include <string>

// The data set in `dir` as a tar file compressed with bzip2, all of it in a
// directory "data-files". Throws a Refusal if that fails.
std::string pack_data_set(const std::string& dir);

// What comes instead of `dir`'s archive: "truncated", "empty", "not-bzip2",
// "not-tar", or "FILE:" and the path of a file to serve as it is.
std::string damaged_archive(const std::string& dir, const std::string& damage);
