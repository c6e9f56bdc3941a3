#include "store/date-check.h"

#include "core/report.h"

#include <cstdio>

DateVerdict judge_date(int year, int month, int mday, std::time_t now)
{
  if (year == 0 || month == 0 || mday == 0)
    return DateVerdict::missing;

  std::tm date{};
  date.tm_mday = mday;
  date.tm_mon = month - 1;
  date.tm_year = year - 1900;
  date.tm_isdst = -1;
  const std::time_t midnight = std::mktime(&date); // changes 31 February to a day in March
  if (debug_level >= 10) {
    std::printf("mktime ret %ld (now = %ld) %d-%d-%d for %d-%d-%d\n", static_cast<long>(midnight),
                static_cast<long>(now), date.tm_year + 1900, date.tm_mon + 1, date.tm_mday, year,
                month, mday);
  }

  if (midnight == -1 || date.tm_mon != month - 1 || date.tm_mday != mday)
    return DateVerdict::invalid;
  return midnight > now ? DateVerdict::in_future : DateVerdict::good;
}
