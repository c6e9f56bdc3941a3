#include "store/survey-checks.h"

#include <gtest/gtest.h>

namespace {

// Returns local noon of a day.
std::time_t noon(int year, int month, int mday)
{
  std::tm time{};
  time.tm_year = year - 1900;
  time.tm_mon = month - 1;
  time.tm_mday = mday;
  time.tm_hour = 12;
  time.tm_isdst = -1;
  return std::mktime(&time);
}

} // namespace

TEST(SurveyDateCheck, AppendsWhatIsWrongToTheDate)
{
  const std::time_t now = noon(2025, 6, 15);
  const struct {
    int year, month, mday;
    const char* text;
    bool good;
  } cases[] = {
      {2025, 6, 15, "2025-06-15", true}, // today
      {2025, 6, 16, "2025-06-16      Date is in the future", false},
      {2025, 2, 30, "2025-02-30      Invalid date", false},
      {2024, 2, 29, "2024-02-29", true},
      {2025, 2, 29, "2025-02-29      Invalid date", false},
      {2025, 4, 31, "2025-04-31      Invalid date", false},
      {0, 6, 15, "Required", false},
      {2025, 0, 15, "Required", false},
      {2025, 6, 0, "Required", false},
  };
  for (const auto& c : cases) {
    const CheckedText checked = check_date(c.year, c.month, c.mday, now);
    EXPECT_EQ(c.text, checked.text.raw());
    EXPECT_EQ(c.good, checked.good) << c.text;
  }
}

TEST(ZoneCheck, RequiresACompleteZoneWithAName)
{
  const struct {
    const char* code;
    const char* name;
    const char* text;
    bool good;
  } cases[] = {
      {"31020003", "Rosario Wall", "31020003", true},
      {"310200031", "Somewhere", "310200031", true},
      {"", "", "Required", false},
      {"3102000", "Islands", "3102000   Incomplete zone", false},
      {"3", "", "3   Incomplete zone", false},
      {"31020003", "", "31020003", false},                  // unknown: red without a text
      {"ééééééé", "x", "ééééééé   Incomplete zone", false}, // 7 characters, 14 bytes
  };
  for (const auto& c : cases) {
    const CheckedText checked = check_zone(c.code, c.name);
    EXPECT_EQ(c.text, checked.text.raw());
    EXPECT_EQ(c.good, checked.good) << c.text;
  }
}

TEST(TemperatureCheck, ChecksTheNumberWithInclusiveLimits)
{
  const struct {
    const char* typed;
    const char* text;
    bool good;
  } cases[] = {
      {"", "", true},
      {"28", "28F", true},
      {"97", "97F", true},
      {"27", "27F      Temperature must be between 28F and 97F", false},
      {"98", "98F      Temperature must be between 28F and 97F", false},
      {"55.5", "55.5F", true},
      {"abc", "abcF      Temperature must be between 28F and 97F", false}, // is read as 0
  };
  for (const auto& c : cases) {
    const CheckedText checked = check_temperature(c.typed, "F", 28, 97);
    EXPECT_EQ(c.text, checked.text.raw());
    EXPECT_EQ(c.good, checked.good) << c.typed;
  }
}

TEST(TemperatureCheck, TreatsTextAsZeroWhichMayBeGood)
{
  EXPECT_TRUE(check_temperature("abc", "C", -2, 36).good);
}

TEST(BottomTimeCheck, TreatsTheLimitsAsUsual)
{
  EXPECT_TRUE(is_unusual_bottom_time(14, 15, 120));
  EXPECT_FALSE(is_unusual_bottom_time(15, 15, 120));
  EXPECT_FALSE(is_unusual_bottom_time(120, 15, 120));
  EXPECT_TRUE(is_unusual_bottom_time(121, 15, 120));
}

TEST(Verdict, SaysHowManyEntriesAreMarked)
{
  EXPECT_EQ("Complete", verdict_on(0));
  EXPECT_EQ("1 entry is missing or needs a look", verdict_on(1));
  EXPECT_EQ("4 entries are missing or need a look", verdict_on(4));
}
