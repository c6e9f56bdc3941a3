#pragma once

#include <string>

// The age of a data set, from its data-file-info.txt. A member is empty if the file lacks the
// key.
struct DataSetInfo {
  std::string timestamp;
  std::string updated;
};

// Reads the file in `dir`, the data set's directory. Throws a Refusal if the file cannot be read
// or a value is not allowed in a header.
DataSetInfo read_data_set_info(const std::string& dir);
