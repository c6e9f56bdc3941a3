#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/data-rules.h"

// The faults of one data set, gathered while its files are checked.
class DataFaults
{
public:
  // `dir` stands in front of the names of files.
  explicit DataFaults(std::string dir);

  // `line` counts from 1; none if the fault has no line. `consequence` is a sentence without
  // a full stop that says what a user will notice.
  void add(DataRule rule, const std::string& file, std::optional<long> line,
           std::string consequence);
  // All of them by file and line, those of a whole file first.
  std::vector<Finding> take_sorted();

private:
  const std::string dir;
  std::vector<Finding> findings;
};
