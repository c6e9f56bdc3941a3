#include "core/number.h"

#include <glib.h>
#include <glibmm/ustring.h>

#include <algorithm>
#include <cstdint>
#include <limits>

int to_int(const char* text)
{
  while (g_ascii_isspace(*text) || *text == '\v')
    ++text;
  const bool is_negative = *text == '-';
  if (*text == '-' || *text == '+')
    ++text;
  constexpr std::int64_t beyond = std::numeric_limits<int>::max() + std::int64_t{1};
  std::int64_t number = 0;
  for (; g_ascii_isdigit(*text); ++text)
    number = std::min(number * 10 + (*text - '0'), beyond);
  return static_cast<int>(is_negative ? -number : std::min(number, beyond - 1));
}

int to_int(const std::string& text)
{
  return to_int(text.c_str());
}

int to_int(const Glib::ustring& text)
{
  return to_int(text.c_str());
}
