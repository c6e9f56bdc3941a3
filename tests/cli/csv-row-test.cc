#include <gtest/gtest.h>

#include "cli/csv-row.h"

TEST(CsvRow, EndsWithACarriageReturnAndALineFeed)
{
  EXPECT_EQ("a,b\r\n", csv_row({"a", "b"}));
  EXPECT_EQ("\r\n", csv_row({}));
}

TEST(CsvRow, KeepsEmptyFields)
{
  EXPECT_EQ(",,\r\n", csv_row({"", "", ""}));
}

TEST(CsvRow, QuotesFieldsThatContainACommaAQuoteOrALineEnd)
{
  EXPECT_EQ("\"a,b\",\"say \"\"x\"\"\",\"1\n2\",\"1\r2\"\r\n",
            csv_row({"a,b", "say \"x\"", "1\n2", "1\r2"}));
}

TEST(CsvRow, KeepsAllOtherCharactersUnchanged)
{
  EXPECT_EQ("=1+1, x ,\\n,'Núñez',\t\r\n", csv_row({"=1+1", " x ", "\\n", "'Núñez'", "\t"}));
}
