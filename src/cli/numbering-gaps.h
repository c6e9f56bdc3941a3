#pragma once

#include <cstddef>
#include <map>
#include <string>

class TableCheck;

// Limits the number of indexes that the rows of a file leave unused in total. The ids are
// indexes of tables. Without the limit, a small file could exhaust the memory.
class NumberingGaps
{
public:
  // Returns whether the program accepts the current row of `table` with this `number` in this
  // `list`. Reports a fault if it does not.
  bool allow(TableCheck& table, const std::string& list, int number);

private:
  std::map<std::string, std::size_t> lengths; // the length of the table of each list
  std::size_t gaps_left = 1'000'000;          // the same limit as in FromCSV
};
