#pragma once

#include <cstddef>
#include <string>

// Reads the rows of a file of comma-separated text with two libraries that do only that.

struct CsvRows {
  std::size_t rows = 0;  // without the headings
  std::size_t bytes = 0; // of all their fields

  bool operator==(const CsvRows& other) const { return rows == other.rows && bytes == other.bytes; }
};

// Reads with fast-cpp-csv-parser: each row becomes texts of std::string, which a function
// counts.
CsvRows fccp_rows(const std::string& path);

// Reads with libcsv, which passes one field after the other, as bytes in its own buffer.
CsvRows libcsv_rows(const std::string& path);
