#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/data-rules.h"

// Collects the faults of one data set.
class DataFaults
{
public:
  // `dir` is the directory of the data set. The paths in the findings begin with it.
  explicit DataFaults(std::string dir);

  // Adds a fault. `line` counts from 1; it is empty if the fault has no line. `consequence`
  // is a sentence without a full stop that describes what a user notices.
  void add(DataRule rule, const std::string& file, std::optional<long> line,
           std::string consequence);
  // Returns all faults in the order of file and line. Faults without a line come first in
  // their file. Then this object is empty.
  std::vector<Finding> take_sorted();

private:
  const std::string dir;
  std::vector<Finding> findings;
};
