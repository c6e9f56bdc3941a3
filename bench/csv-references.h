#pragma once

#include <cstddef>
#include <string>

// Counts the rows of a CSV file with two libraries that only split such files.

struct CsvRows {
  std::size_t rows = 0;  // without the headings
  std::size_t bytes = 0; // of all their fields

  bool operator==(const CsvRows& other) const { return rows == other.rows && bytes == other.bytes; }
};

// Counts with fast-cpp-csv-parser, which creates a std::string for each field. Ends the process
// if the file has a number of columns that no data file has.
CsvRows fccp_rows(const std::string& path);

// Counts with libcsv, which passes one field after the other, as bytes in its own buffer.
// REQUIRES: the file exists.
CsvRows libcsv_rows(const std::string& path);
