#include "core/text.h"

#include <gtest/gtest.h>

TEST(TrimWs, DropsBlanksAtBothEndsAndNothingElse)
{
  const struct {
    const char* why;
    const char* text;
    const char* expected;
  } cases[] = {
      {"inner blanks stay", "  a b  ", "a b"},
      {"a tab is not a blank", "\ta  ", "\ta"},
      {"a line end is not a blank", " a\n", "a\n"},
      {"only blanks", "   ", ""},
      {"nothing", "", ""},
      {"no blank at either end", "a b", "a b"},
      {"characters of several bytes", " é漢 ", "é漢"},
      {"a no-break space is not a blank", "\u00a0a ", "\u00a0a"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(c.expected, trim_ws<Glib::ustring>(c.text).raw()) << c.why;
}

TEST(Strchrnul, GivesTheCharacterOrTheEnd)
{
  const char* const text = "abc";
  EXPECT_EQ(text + 1, strchrnul(text, 'b'));
  EXPECT_EQ(text + 3, strchrnul(text, 'x'));
}
