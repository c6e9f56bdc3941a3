#pragma once

#include <cstddef>
#include <map>
#include <string>

class TableCheck;

// The allowance that all rows of a file share for leaving numbers unused: the lists that
// they number are tables, and a small file must not take much memory.
class NumberingGaps
{
public:
  // Whether the program keeps the row that `table` is at, with this number in that list. If
  // not, that has been reported.
  bool allow(TableCheck& table, const std::string& list, int number);

private:
  std::map<std::string, std::size_t> lengths; // of the tables, by list
  std::size_t gaps_left = 1'000'000;          // as FromCSV has it
};
