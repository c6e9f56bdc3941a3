#include "store/survey-checks.h"

#include "core/number.h"
#include "data/zone-code.h"
#include "store/date-check.h"

#include <cstdio>
#include <string>

CheckedText check_date(int year, int month, int mday, std::time_t now)
{
  const DateVerdict verdict = judge_date(year, month, mday, now);
  if (verdict == DateVerdict::missing)
    return {"Required", false};
  char date[128];
  snprintf(date, sizeof date, "%04d-%02d-%02d", year, month, mday);
  switch (verdict) {
  case DateVerdict::invalid:
    return {std::string(date) + "      Invalid date", false};
  case DateVerdict::in_future:
    return {std::string(date) + "      Date is in the future", false};
  default:
    return {date, true};
  }
}

CheckedText check_zone(const Glib::ustring& code, const Glib::ustring& name)
{
  if (code.empty())
    return {"Required", false};
  if (!is_complete_zone(code))
    return {code + "   Incomplete zone", false};
  return {code, !name.empty()};
}

CheckedText check_temperature(const Glib::ustring& typed, const Glib::ustring& unit, int min,
                              int max)
{
  if (typed.empty())
    return {typed, true};
  const int degrees = to_int(typed);
  const Glib::ustring shown = typed + unit;
  if (degrees >= min && degrees <= max)
    return {shown, true};
  return {shown + "      Temperature must be between " + std::to_string(min) + unit + " and " +
              std::to_string(max) + unit,
          false};
}

bool is_unusual_bottom_time(int minutes, int confirm_under, int confirm_over)
{
  return minutes < confirm_under || minutes > confirm_over;
}

Glib::ustring verdict_on(std::size_t marked)
{
  if (marked == 0)
    return "Complete";
  if (marked == 1)
    return "1 entry is missing or needs a look";
  return std::to_string(marked) + " entries are missing or need a look";
}
