#pragma once

#include <glibmm/ustring.h>

#include <cstdint>
#include <vector>

// Finds a row of a list by the first letters of its text. Letters that follow each
// other without a pause of a second count as one beginning. Case and accents do not
// count. Knows no widget.
class TypeAhead
{
public:
  // Takes a letter that is typed while the row `current` is chosen, -1 for none. `time`
  // is in milliseconds of any clock. Gives the next row that begins with all letters so
  // far, the first one after the last. The same letter again and again goes from one row
  // with that letter to the next. Gives -1 if no row fits; the next letter then begins
  // a new search.
  int type(gunichar letter, std::uint32_t time, int current,
           const std::vector<Glib::ustring>& labels);
  // Whether a letter at that time continues what was typed before.
  bool is_under_way(std::uint32_t time) const;
  void reset();

private:
  Glib::ustring typed;
  std::uint32_t last_time = 0; // of the last letter
};
