#include "ui/type-ahead.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Labels = std::vector<Glib::ustring>;

const Labels months = {"January", "February", "March",     "April",   "May",      "June",
                       "July",    "August",   "September", "October", "November", "December"};

Labels days()
{
  Labels result;
  for (int day = 1; day <= 31; ++day)
    result.emplace_back(std::to_string(day));
  return result;
}

// Types a text without a pause. Returns the label of the row, or an empty text if the last letter
// finds no row.
std::string typed(TypeAhead& search, const Glib::ustring& text, const Labels& labels,
                  int current = -1)
{
  std::uint32_t time = 500;
  for (const gunichar letter : text)
    current = search.type(letter, time += 200, current, labels);
  return current < 0 ? "" : labels[static_cast<std::size_t>(current)].raw();
}

std::string typed(const Glib::ustring& text, const Labels& labels, int current = -1)
{
  TypeAhead search;
  return typed(search, text, labels, current);
}

} // namespace

TEST(TypeAhead, FindsTheFirstRowWhileNothingIsChosen)
{
  EXPECT_EQ("1", typed("1", days()));
  EXPECT_EQ("January", typed("J", months));
}

TEST(TypeAhead, SearchesForAllLettersTypedSoFar)
{
  EXPECT_EQ("12", typed("12", days()));
  EXPECT_EQ("31", typed("31", days()));
  EXPECT_EQ("June", typed("Ju", months));
  EXPECT_EQ("July", typed("Jul", months));
}

TEST(TypeAhead, GoesToTheNextRowAfterTheChosenOne)
{
  EXPECT_EQ("10", typed("1", days(), 4)) << "from 5";
  EXPECT_EQ("July", typed("Ju", months, 5)) << "from June";
  EXPECT_EQ("12", typed("12", days(), 9)) << "from 10";
}

TEST(TypeAhead, ContinuesAtTheTop)
{
  EXPECT_EQ("January", typed("J", months, 6));
  EXPECT_EQ("June", typed("Ju", months, 6));
  EXPECT_EQ("December", typed("D", months, 11)) << "the only one";
}

TEST(TypeAhead, StaysAtARowThatStillMatches)
{
  EXPECT_EQ("January", typed("Jan", months, 11));
  EXPECT_EQ("March", typed("March", months));
}

TEST(TypeAhead, GoesThroughTheRowsOfALetterThatIsRepeated)
{
  EXPECT_EQ("June", typed("jj", months));
  EXPECT_EQ("July", typed("jjj", months));
  EXPECT_EQ("January", typed("jjjj", months));
  EXPECT_EQ("11", typed("11", days())) << "a row begins with both";
  EXPECT_EQ("22", typed("22", days()));
}

TEST(TypeAhead, StartsAgainAfterAPause)
{
  TypeAhead search;
  EXPECT_EQ(0, search.type('1', 5000, -1, days()));
  EXPECT_TRUE(search.is_under_way(5999));
  EXPECT_FALSE(search.is_under_way(6000));
  EXPECT_EQ(1, search.type('2', 6000, 0, days()));
}

TEST(TypeAhead, MeasuresThePauseFromTheLastLetter)
{
  TypeAhead search;
  const Labels labels = {"a", "aba", "abcd"};
  search.type('a', 0, -1, labels);
  search.type('b', 900, 0, labels);
  EXPECT_EQ(2, search.type('c', 1800, 1, labels));
}

TEST(TypeAhead, MeasuresThePauseWhenTheClockWrapsAround)
{
  TypeAhead search;
  search.type('1', 0xffffff00U, -1, days());
  EXPECT_EQ(11, search.type('2', 0x00000010U, 0, days()));
}

TEST(TypeAhead, StartsAgainAfterALetterThatMatchesNothing)
{
  TypeAhead search;
  EXPECT_EQ("", typed(search, "Fx", months));
  EXPECT_FALSE(search.is_under_way(900));
  EXPECT_EQ(4, search.type('m', 910, 2, months)) << "not \"Fxm\"";
}

TEST(TypeAhead, StartsAgainAfterAReset)
{
  TypeAhead search;
  search.type('1', 0, -1, days());
  search.reset();
  EXPECT_FALSE(search.is_under_way(1));
  EXPECT_EQ(1, search.type('2', 1, 0, days()));
}

TEST(TypeAhead, IgnoresCaseAccentsAndLeadingBlanks)
{
  const Labels labels = {"Ärö", "  Été de l'île", "Straße", "ﬁn"};
  EXPECT_EQ("Ärö", typed("aro", labels));
  EXPECT_EQ("Ärö", typed("ÄR", labels));
  EXPECT_EQ("  Été de l'île", typed("ete de l'i", labels));
  EXPECT_EQ("Straße", typed("STRASS", labels));
  EXPECT_EQ("ﬁn", typed("fin", labels));
}

TEST(TypeAhead, AcceptsFullWidthDigits)
{
  EXPECT_EQ("12", typed("１２", days()));
}

TEST(TypeAhead, FindsBlanksInsideALabel)
{
  const Labels hours = {"10 AM", "1 AM", "1 PM"};
  EXPECT_EQ("1 AM", typed("1 ", hours));
  EXPECT_EQ("1 PM", typed("1 p", hours));
}

TEST(TypeAhead, FindsNothingInAnEmptyList)
{
  EXPECT_EQ("", typed("a", {}));
  EXPECT_EQ("", typed("a", {"", "  "}));
}

TEST(TypeAhead, FindsNothingForACombiningMark)
{
  EXPECT_EQ("", typed("\u0301", months));
}

TEST(TypeAhead, AcceptsAChosenRowThatNoLongerExists)
{
  EXPECT_EQ("February", typed("f", months, 40));
}
