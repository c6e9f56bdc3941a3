#include "ui/window-title.h"

#include <gtest/gtest.h>

TEST(WindowTitle, HasDateStartSiteAndProgramIfTheyAreKnown)
{
  const struct {
    const char* why;
    int year, month, mday;
    const char *dive_start, *site, *expected;
  } cases[] = {
      {"all known", 2021, 6, 30, "9 AM", "Rosario Wall",
       "2021-06-30 9 AM - Rosario Wall - MAVO Survey"},
      {"nothing known", 0, 0, 0, "", "", "MAVO Survey"},
      {"no blank after a date alone", 2021, 6, 30, "", "", "2021-06-30 - MAVO Survey"},
      {"a part of the date is missing", 2021, 0, 3, "", "", "2021-00-03 - MAVO Survey"},
      {"a day alone", 0, 0, 3, "", "", "0000-00-03 - MAVO Survey"},
      {"site alone", 0, 0, 0, "", "Rosario Wall", "Rosario Wall - MAVO Survey"},
      {"date and site", 2021, 6, 30, "", "Rosario Wall", "2021-06-30 - Rosario Wall - MAVO Survey"},
      {"start alone keeps the blank before it", 0, 0, 0, "9 AM", "", " 9 AM - MAVO Survey"},
      {"start and site", 0, 0, 0, "9 AM", "Rosario Wall", " 9 AM - Rosario Wall - MAVO Survey"},
      {"words, not markup", 0, 0, 0, "", "Salt & <Pepper>", "Salt & <Pepper> - MAVO Survey"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.expected,
              window_title(c.year, c.month, c.mday, c.dive_start, c.site, "MAVO Survey").raw())
        << c.why;
  }
}

TEST(WindowTitle, AcceptsAnEmptyTitleOfTheProgram)
{
  EXPECT_EQ("2021-06-30 - ", window_title(2021, 6, 30, "", "", "").raw());
  EXPECT_EQ("", window_title(0, 0, 0, "", "", "").raw());
}
