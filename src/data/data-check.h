#pragma once

#include <filesystem>
#include <string>

// Returns the timestamp of the data set in `dir`, which ends in a slash. Returns an empty
// text if its metadata are not valid. Shows no message.
std::string data_timestamp(const std::string& dir);

// Returns whether the data set in `dir`, which ends in a slash, can be read completely. Shows
// no message; the tables print their complaints to standard output.
bool is_complete_data_set(const std::string& dir);

// Returns whether a newer and complete data set in `data` has replaced all files of the
// backup `kept`, so that `kept` need not be restored. Returns false in case of doubt. `begun`
// is the time at which `kept` was made.
bool is_complete_newer_set(const std::filesystem::path& data, const std::filesystem::path& kept,
                           std::filesystem::file_time_type begun);
