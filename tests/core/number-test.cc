#include "core/number.h"

#include <glibmm/ustring.h>
#include <gtest/gtest.h>

#include <limits>

TEST(ToInt, ReadsUpToTheLastDigit)
{
  const struct {
    const char* text;
    int expected;
  } cases[] = {
      {"12", 12},
      {"-3", -3},
      {"+4", 4},
      {"  7", 7},
      {"\t8", 8},
      {"12abc", 12},
      {"\v\f\n\r9", 9},
      {"+-4", 0},
      {"2147483648", 2147483647},
      {"-2147483648", -2147483647 - 1},
      {"0012", 12},
      {"", 0},
      {"abc", 0},
      {"- 1", 0},
      {"3.9", 3},
      {"0x10", 0},
  };
  for (const auto& c : cases)
    EXPECT_EQ(c.expected, to_int(c.text)) << '"' << c.text << '"';
}

TEST(ToInt, ReturnsTheNearestNumberBeyondTheRange)
{
  EXPECT_EQ(std::numeric_limits<int>::max(), to_int("99999999999"));
  EXPECT_EQ(std::numeric_limits<int>::min(), to_int("-99999999999"));
  EXPECT_EQ(std::numeric_limits<int>::max(), to_int("999999999999999999999999999999"));
}

TEST(ToInt, AcceptsBothKindsOfString)
{
  EXPECT_EQ(5, to_int(std::string("5")));
  EXPECT_EQ(6, to_int(Glib::ustring("6é")));
}
