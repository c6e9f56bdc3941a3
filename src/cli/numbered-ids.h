#pragma once

#include <optional>
#include <vector>

// The ids of a file that are indexes of a table, from 0 to FromCSV::max_id, with their lines.
class NumberedIds
{
public:
  // Adds the id of a row. Returns the line of the previous row with this id, if there is one.
  // REQUIRES: `id` is not negative.
  std::optional<long> add(int id, long line)
  {
    const auto index = static_cast<std::size_t>(id);
    if (index >= lines.size())
      lines.resize(index + 1);
    const long before = lines[index];
    lines[index] = line;
    return before == 0 ? std::nullopt : std::optional<long>(before);
  }

  // Returns whether a row has the id.
  bool has(int id) const { return line_of(id) != 0; }
  // Returns the line of the last row with the id, or 0 if there is none.
  long line_of(int id) const
  {
    const auto index = static_cast<std::size_t>(id);
    return index < lines.size() ? lines[index] : 0;
  }
  // Returns whether the id can be defined. An unreadable row can define any id, so this is
  // true for all ids if the file was not read completely.
  bool may_have(int id) const { return !is_complete || has(id); }
  // Returns the largest id plus 1, or 0 if there is no id.
  int end() const { return static_cast<int>(lines.size()); }

  bool is_complete = false; // whether the file has rows and all of them could be read

private:
  std::vector<long> lines; // by id; 0 if the id is missing
};
