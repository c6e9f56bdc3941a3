#include "ui/verdict.h"

#include <gtest/gtest.h>

TEST(Verdict, SaysHowManyEntriesAreMarked)
{
  EXPECT_EQ("Complete", verdict_on(0));
  EXPECT_EQ("1 entry is missing or needs a look", verdict_on(1));
  EXPECT_EQ("4 entries are missing or need a look", verdict_on(4));
}
