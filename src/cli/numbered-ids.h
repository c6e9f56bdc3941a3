#pragma once

#include <optional>
#include <vector>

// The ids of a file that number a table, from 0 to FromCSV::max_id, with the line of each.
class NumberedIds
{
public:
  // Notes the id of a row. The line where it stood before, none if it is new.
  std::optional<long> add(int id, long line)
  {
    const auto index = static_cast<std::size_t>(id);
    if (index >= lines.size())
      lines.resize(index + 1);
    const long before = lines[index];
    lines[index] = line;
    return before == 0 ? std::nullopt : std::optional<long>(before);
  }

  bool has(int id) const { return line_of(id) != 0; }
  // The line of the last row with the id, 0 if there is none.
  long line_of(int id) const
  {
    const auto index = static_cast<std::size_t>(id);
    return index < lines.size() ? lines[index] : 0;
  }
  // Whether the id is defined. Where rows of the file could not be read it may be in
  // one of these, so that nobody is accused.
  bool may_have(int id) const { return !is_whole || has(id); }
  // What no id reaches.
  int end() const { return static_cast<int>(lines.size()); }

  bool is_whole = false; // all rows could be read, and there are some

private:
  std::vector<long> lines; // by id; 0 for one that is not there
};
