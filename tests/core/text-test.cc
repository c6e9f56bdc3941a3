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

TEST(Strchrnul, GivesTheFirstSuchCharacterOrTheEnd)
{
  const char* const text = "abcb";
  for (const int c : std::initializer_list<int>{'a', 'b', 'x', '\0', 'b' + 256, 'x' + 256}) {
    const auto byte = static_cast<unsigned char>(c);
    const char* const expected = text + (byte == 'a' ? 0 : byte == 'b' ? 1 : 4);
    EXPECT_EQ(expected, strchrnul(text, c)) << c;
    EXPECT_EQ(expected, find_or_end(text, c)) << c; // what stands in where the former is missing
  }
  EXPECT_STREQ("", strchrnul("", 'a'));
  EXPECT_STREQ("", find_or_end("", 'a'));
}
