#include <gtest/gtest.h>

#include "cli/darwin-core-values.h"

namespace {

std::string date_of(const char* year, int month, int mday, int dive_start)
{
  Survey survey;
  survey.year = year;
  survey.month = month;
  survey.mday = mday;
  survey.dive_start = dive_start;
  return event_date(survey);
}

void expect_ends(const char* label, const char* lower, const char* upper)
{
  const DepthEnds ends = depth_ends(label);
  EXPECT_EQ(lower, ends.lower) << label;
  EXPECT_EQ(upper, ends.upper) << label;
}

} // namespace

TEST(EventDate, HasTheHourOfTheStart)
{
  EXPECT_EQ("2021-06-30T09:00", date_of("2021", 6, 30, 9));
  EXPECT_EQ("2021-06-30T23:00", date_of("2021", 6, 30, 23));
}

TEST(EventDate, ShowsMidnightAsTheFirstHourOfTheSameDay)
{
  EXPECT_EQ("2021-06-30T00:00", date_of("2021", 6, 30, 24));
}

TEST(EventDate, HasOnlyTheDayIfTheStartIsUnknown)
{
  EXPECT_EQ("2021-06-30", date_of("2021", 6, 30, -1));
  EXPECT_EQ("2021-06-30", date_of("2021", 6, 30, 25));
}

TEST(EventDate, HasOnlyTheValidPartsOfAnIncompleteDate)
{
  EXPECT_EQ("2021-02", date_of("2021", 2, 30, 9));
  EXPECT_EQ("2020-02-29T09:00", date_of("2020", 2, 29, 9));
  EXPECT_EQ("2021-06", date_of("2021", 6, 0, 9));
  EXPECT_EQ("2021", date_of("2021", 0, 30, 9));
  EXPECT_EQ("2021", date_of("2021", 13, 30, 9));
  EXPECT_EQ("", date_of("0000", 6, 30, 9));
  EXPECT_EQ("", date_of("99999", 6, 30, 9));
  EXPECT_EQ("", date_of("-5", 6, 30, 9));
}

TEST(DepthEnds, AreBothLimitsOfAClosedClass)
{
  expect_ends("10-19 ft (3-6 m)", "3", "6");
  expect_ends("100\u2013109 ft (30\u201333 m)", "30", "33");
  expect_ends("(1.5-3 m)", "1.5", "3");
}

TEST(DepthEnds, LackOneLimitIfTheClassIsOpen)
{
  expect_ends("Less than 10 ft (3 m)", "", "3");
  expect_ends("130 ft (40 m) or deeper", "40", "");
  expect_ends("More than 130 ft (40 m)", "40", "");
}

TEST(DepthEnds, AreMissingInALabelWithoutMetres)
{
  expect_ends("Snorkel", "", "");
  expect_ends("", "", "");
  expect_ends("10-19 ft", "", "");
  expect_ends("(3-6 km)", "", "");
}

TEST(DepthEnds, NeedLittleWorkForALabelOfAnyLength)
{
  expect_ends(("(" + std::string(1'000'000, '1')).c_str(), "", "");
}

TEST(WholeMinutes, AreDigitsWithBlanksAroundThem)
{
  EXPECT_EQ("45", whole_minutes("45"));
  EXPECT_EQ("45", whole_minutes(" 45 "));
  EXPECT_EQ("", whole_minutes("45 min"));
  EXPECT_EQ("", whole_minutes("-5"));
  EXPECT_EQ("", whole_minutes("4.5"));
  EXPECT_EQ("", whole_minutes(""));
}
