#pragma once

#include <cstddef>
#include <map>
#include <string>

class TableCheck;

// The number of unused indexes that the rows of a file may leave in total. The ids are indexes
// of tables; without the limit, a small file could fill the memory.
class NumberingGaps
{
public:
  // Returns whether the program accepts the current row of `table` with this `number` in that
  // `list`. Reports a fault if not.
  bool allow(TableCheck& table, const std::string& list, int number);

private:
  std::map<std::string, std::size_t> lengths; // the length of the table of each list
  std::size_t gaps_left = 1'000'000;          // the same limit as in FromCSV
};
