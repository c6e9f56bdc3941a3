#pragma once

#include <optional>
#include <unordered_map>

// The ids that a file defines, with the line of each.
template<typename Id>
class KnownIds
{
public:
  // Notes the id of a row. The line where it stood before, none if it is new.
  std::optional<long> add(const Id& id, long line)
  {
    const auto [known, is_new] = lines.try_emplace(id, line);
    if (is_new)
      return {};
    const long before = known->second;
    known->second = line;
    return before;
  }

  // Whether the id is defined. Where rows of the file could not be read it may be in
  // one of these, so that nobody is accused.
  bool may_have(const Id& id) const { return !is_whole || lines.count(id) > 0; }

  bool is_whole = false; // all rows could be read, and there are some
  std::unordered_map<Id, long> lines;
};
