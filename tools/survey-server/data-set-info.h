#pragma once

#include <string>

// The values of a data set's data-file-info.txt that a version query returns.
struct DataSetInfo {
  std::string timestamp;
  std::string updated;
};

// Reads the file in `dir`, the data set's directory. Throws a Refusal if the file cannot be read,
// or if one of these values is missing, empty or not allowed in a header.
DataSetInfo read_data_set_info(const std::string& dir);
