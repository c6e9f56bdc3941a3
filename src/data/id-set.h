#pragma once

#include <algorithm>
#include <initializer_list>
#include <vector>

// A set of ids for membership tests. Compared with std::set, it needs a tenth of the memory, and
// reading all tables takes a tenth less time. Large data sets have hundreds of thousands of
// species in their views.
class IdSet
{
public:
  using const_iterator = std::vector<int>::const_iterator;

  IdSet() = default;
  IdSet(std::initializer_list<int> the_ids)
  {
    for (const int id : the_ids)
      insert(id);
  }

  // Adds an id. It is fastest if the ids come in ascending order.
  void insert(int id)
  {
    if (ids.empty() || ids.back() < id) {
      ids.push_back(id);
      return;
    }
    const auto place = std::lower_bound(ids.begin(), ids.end(), id);
    if (*place != id) // `place` is not the end, because the last id is not less than `id`
      ids.insert(place, id);
  }
  // Returns 1 if the set contains the id, else 0.
  std::size_t count(int id) const { return std::binary_search(ids.begin(), ids.end(), id) ? 1 : 0; }

  // Iterate over the ids in ascending order.
  const_iterator begin() const { return ids.begin(); }
  const_iterator end() const { return ids.end(); }
  // Returns the position of the id, or end() if the set does not contain it.
  const_iterator find(int id) const
  {
    const auto place = std::lower_bound(ids.begin(), ids.end(), id);
    return place != ids.end() && *place == id ? place : ids.end();
  }
  std::size_t size() const { return ids.size(); }
  bool empty() const { return ids.empty(); }
  bool operator==(const IdSet& other) const { return ids == other.ids; }

private:
  std::vector<int> ids; // ascending
};
