#include "store/date-check.h"
#include "support/output.h"

#include <glibmm/miscutils.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <string>

namespace {

// Sets the local time zone during its lifetime.
class TimeZone
{
public:
  explicit TimeZone(const char* name) : previous(Glib::getenv("TZ")) { set(name); }
  ~TimeZone() { set(previous.c_str()); }
  TimeZone(const TimeZone&) = delete;
  TimeZone& operator=(const TimeZone&) = delete;

private:
  static void set(const char* name)
  {
    setenv("TZ", name, 1);
    tzset();
  }
  std::string previous;
};

constexpr std::time_t hour = 3600;
constexpr std::time_t noon_of_2021_06_30 = 1625054400; // in UTC

} // namespace

// NOLINTNEXTLINE(misc-definitions-in-headers): found by GoogleTest
std::ostream& operator<<(std::ostream& out, DateVerdict verdict)
{
  const char* const names[] = {"good", "missing", "invalid", "in_future"};
  return out << names[static_cast<int>(verdict)];
}

TEST(JudgeDate, ReturnsWhatIsWrongWithADate)
{
  const struct {
    const char* why;
    int year, month, mday;
    DateVerdict expected;
  } cases[] = {
      {"yesterday", 2021, 6, 29, DateVerdict::good},
      {"today", 2021, 6, 30, DateVerdict::good},
      {"tomorrow", 2021, 7, 1, DateVerdict::in_future},
      {"years ahead", 2031, 1, 1, DateVerdict::in_future},
      {"no year", 0, 6, 30, DateVerdict::missing},
      {"no month", 2021, 0, 30, DateVerdict::missing},
      {"no day", 2021, 6, 0, DateVerdict::missing},
      {"nothing", 0, 0, 0, DateVerdict::missing},
      {"31 June", 2021, 6, 31, DateVerdict::invalid},
      {"30 February of a future year", 2025, 2, 30, DateVerdict::invalid},
      {"29 February of a leap year", 2020, 2, 29, DateVerdict::good},
      {"29 February of another year", 2021, 2, 29, DateVerdict::invalid},
      {"29 February of a century", 1900, 2, 29, DateVerdict::invalid},
      {"the first year offered", 1993, 1, 1, DateVerdict::good},
      {"a day before 1970, where the clock starts", 1969, 12, 31, DateVerdict::good},
      {"a year beyond the range of the clock", std::numeric_limits<int>::max(), 1, 1,
       DateVerdict::in_future},
  };
  for (const auto& c : cases)
    EXPECT_EQ(c.expected, judge_date(c.year, c.month, c.mday, noon_of_2021_06_30)) << c.why;
}

TEST(JudgeDate, TreatsADayAsFutureUntilItsFirstMidnight)
{
  const std::time_t midnight = 1625011200; // 2021-06-30 00:00:00 in UTC
  EXPECT_EQ(DateVerdict::in_future, judge_date(2021, 6, 30, midnight - 1));
  EXPECT_EQ(DateVerdict::good, judge_date(2021, 6, 30, midnight));
  EXPECT_EQ(DateVerdict::good, judge_date(2021, 6, 30, midnight + 24 * hour - 1));
}

TEST(JudgeDate, UsesTheLocalTimeZone)
{
  const std::time_t evening = noon_of_2021_06_30 + 11 * hour; // 23:00 in UTC
  EXPECT_EQ(DateVerdict::in_future, judge_date(2021, 7, 1, evening));
  const TimeZone east("EAST-2"); // two hours ahead: 01:00 of the next day
  EXPECT_EQ(DateVerdict::good, judge_date(2021, 7, 1, evening));
}

TEST(JudgeDate, AcceptsADayWithoutAMidnight)
{
  const TimeZone summer_begins_at_midnight("BRT3BRST,M10.3.0/0,M2.3.0/0");
  const std::time_t a_week_later = 1635044400;
  EXPECT_EQ(DateVerdict::good, judge_date(2021, 10, 17, a_week_later));
}

TEST(JudgeDate, RefusesADateThatTheSystemCannotRepresent)
{
  // The second before 1970 is also the error code of the library.
  const TimeZone odd("ODD0:00:01"); // local midnight of 1 January 1970 is at second 1
  EXPECT_EQ(DateVerdict::good, judge_date(1970, 1, 1, noon_of_2021_06_30));
  const TimeZone other("ODD-0:00:01"); // here it is at second -1
  EXPECT_EQ(DateVerdict::invalid, judge_date(1970, 1, 1, noon_of_2021_06_30));
}

TEST(JudgeDate, TracesTheNormalisedDateAtLevelTen)
{
  const auto judge = [] { judge_date(2021, 2, 31, noon_of_2021_06_30); };
  {
    const TraceLevel level(10);
    EXPECT_EQ("mktime ret 1614729600 (now = 1625054400) 2021-3-3 for 2021-2-31\n",
              output_of(judge));
  }
  const TraceLevel level(9);
  EXPECT_EQ("", output_of(judge));
}
