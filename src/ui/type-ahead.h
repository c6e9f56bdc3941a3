#pragma once

#include <glibmm/ustring.h>

#include <cstdint>
#include <vector>

// Finds a row of a list by the first letters of its text. A pause of a second starts a new
// search. Ignores case and accents. Does not depend on a widget.
class TypeAhead
{
public:
  // Processes a letter. `current` is the chosen row, or -1; `time` is in milliseconds of any
  // clock. Returns the next row that begins with all letters so far; after the last row, the
  // search continues at the first one. If the same letter is repeated, goes to the next row with
  // that letter. Returns -1 if no row matches; then the next letter starts a new search.
  int type(gunichar letter, std::uint32_t time, int current,
           const std::vector<Glib::ustring>& labels);
  // Returns whether a letter at that time continues the current search.
  bool is_under_way(std::uint32_t time) const;
  // Ends the current search.
  void reset();

private:
  Glib::ustring typed;
  std::uint32_t last_time = 0; // the time of the last letter
};
