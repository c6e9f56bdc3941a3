#pragma once

#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

// Finds the lines of rows in the CSV files of a data set by their ids. Reads a file at the
// first search in it.
class RowLines
{
public:
  // `dir` ends in a slash.
  explicit RowLines(std::string dir);

  using Texts = std::vector<std::string>;
  // Returns the line, from 1, of the first row of `file` with these `ids` under these
  // `headings`. Compares numeric ids as numbers. Returns nullopt if there is no such row.
  std::optional<long> find(const std::string& file, const Texts& headings, const Texts& ids);

private:
  using Index = std::unordered_map<std::string, long>; // by the ids of a row
  Index read(const std::string& file, const Texts& headings) const;

  const std::string dir;
  std::map<std::pair<std::string, Texts>, Index> indexes; // by file and headings
};
