#pragma once

#include <cstddef>
#include <string>

// The rows of a file of comma-separated text, by two libraries that do only that.

struct CsvRows {
  std::size_t rows = 0;  // without the headings
  std::size_t bytes = 0; // of all their fields

  bool operator==(const CsvRows& other) const { return rows == other.rows && bytes == other.bytes; }
};

// By fast-cpp-csv-parser: each row becomes texts of std::string, which are handed to
// a function that counts them.
CsvRows fccp_rows(const std::string& path);

// By libcsv, which hands over one field after the other, as bytes in its own buffer.
CsvRows libcsv_rows(const std::string& path);
