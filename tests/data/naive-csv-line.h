#pragma once

#include <string>
#include <vector>

// A second reader of a line of a data file, for comparison with the program's reader. It is
// slow, reads character by character with a state machine, and shares no code.
struct NaiveCsvLine {
  struct Botched {
    std::size_t column; // from 1
    std::string text;
  };

  explicit NaiveCsvLine(const std::string& line);

  std::vector<std::string> fields; // bytes that are not UTF-8 are replaced by U+FFFD
  std::vector<Botched> botched;    // fields with text after their closing quote
};
