#pragma once

#include <string>
#include <vector>

// A second reading of a line of a data file, to compare the program's with: slow,
// character by character, one state after the other, and sharing nothing with it.
struct NaiveCsvLine {
  struct Botched {
    std::size_t column; // from 1
    std::string text;
  };

  explicit NaiveCsvLine(const std::string& line);

  std::vector<std::string> fields; // bytes that are not UTF-8 have become U+FFFD
  std::vector<Botched> botched;    // fields with text behind their closing quote
};
