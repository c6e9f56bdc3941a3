#include "core/number.h"

#include <glibmm/ustring.h>

#include <algorithm>
#include <cstdlib>
#include <limits>

int to_int(const char* text)
{
  const long number = std::strtol(text, nullptr, 10); // out of range: the nearest long
  constexpr long lowest = std::numeric_limits<int>::min();
  constexpr long highest = std::numeric_limits<int>::max();
  return static_cast<int>(std::clamp(number, lowest, highest));
}

int to_int(const std::string& text)
{
  return to_int(text.c_str());
}

int to_int(const Glib::ustring& text)
{
  return to_int(text.c_str());
}
