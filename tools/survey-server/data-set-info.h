#pragma once

#include <string>

// How new a data set is, from its data-file-info.txt. Both are empty if the file
// does not tell.
struct DataSetInfo {
  std::string timestamp;
  std::string updated;
};

// `dir` is the data set's directory. Throws a Refusal if the file cannot be read
// or a value cannot stand in a header.
DataSetInfo read_data_set_info(const std::string& dir);
