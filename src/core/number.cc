#include "core/number.h"

#include <glib.h>
#include <glibmm/ustring.h>

#include <algorithm>
#include <limits>

std::int64_t to_int64(const char* text)
{
  while (g_ascii_isspace(*text) || *text == '\v')
    ++text;
  const bool is_negative = *text == '-';
  if (*text == '-' || *text == '+')
    ++text;
  constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
  std::int64_t number = 0;
  for (; g_ascii_isdigit(*text); ++text) {
    const int digit = *text - '0';
    number = number > (largest - digit) / 10 ? largest : number * 10 + digit;
  }
  return is_negative ? -number : number;
}

int to_int(const char* text)
{
  using Range = std::numeric_limits<int>;
  return static_cast<int>(std::clamp<std::int64_t>(to_int64(text), Range::min(), Range::max()));
}

int to_int(const std::string& text)
{
  return to_int(text.c_str());
}

int to_int(const Glib::ustring& text)
{
  return to_int(text.c_str());
}
