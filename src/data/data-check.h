#pragma once

#include <filesystem>
#include <string>

// The timestamp of the data set in `dir`, which ends in a slash; empty if its metadata
// are not valid. Shows no message.
std::string data_timestamp(const std::string& dir);

// Whether the data set in `dir`, which ends in a slash, can be read completely. Shows no
// message; what the tables print goes to standard output.
bool is_complete_data_set(const std::string& dir);

// Whether a newer data set, in `data`, has replaced all files of the one in `kept` and is
// complete, so that `kept` need not be restored. In doubt it is not. `begun` is when
// `kept` was made a backup of `data`.
bool is_complete_newer_set(const std::filesystem::path& data, const std::filesystem::path& kept,
                           std::filesystem::file_time_type begun);
