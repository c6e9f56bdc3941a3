#pragma once

#include <optional>
#include <unordered_map>

// The ids that a file defines, with their lines.
template<typename Id>
class KnownIds
{
public:
  // Adds the id of a row. Returns the line of the previous row with this id, if there is one.
  std::optional<long> add(const Id& id, long line)
  {
    const auto [known, is_new] = lines.try_emplace(id, line);
    if (is_new)
      return {};
    const long before = known->second;
    known->second = line;
    return before;
  }

  // Returns whether the id can be defined. An unreadable row can define any id, so this is
  // true for all ids if the file was not read completely.
  bool may_have(const Id& id) const { return !is_complete || lines.count(id) > 0; }

  bool is_complete = false;           // whether the file has rows and all of them could be read
  std::unordered_map<Id, long> lines; // the last line of each id, from 1
};
