#include "core/version.h"

#include <gtest/gtest.h>

#include <regex>

TEST(BuildInfo, SeparatesTheNumbersByPoints)
{
  EXPECT_EQ(std::to_string(BuildInfo::major) + "." + std::to_string(BuildInfo::minor) + "." +
                std::to_string(BuildInfo::buildnum),
            BuildInfo::version_str);
}

TEST(BuildInfo, HasTheBuildDateAsYearMonthDayAndTime)
{
  EXPECT_TRUE(std::regex_match(BuildInfo::date_str,
                               std::regex("\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d")))
      << BuildInfo::date_str;
}
