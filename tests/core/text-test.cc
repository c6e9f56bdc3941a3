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

TEST(SameBytes, DistinguishesTextsThatTheLocaleTreatsAsEqual)
{
  const Glib::ustring composed = "\u00e9";
  const Glib::ustring decomposed = "e\u0301";
  ASSERT_EQ(composed, decomposed); // the comparison of the library
  EXPECT_FALSE(same_bytes(composed, decomposed));
  EXPECT_TRUE(same_bytes(composed, "\xc3\xa9"));
  EXPECT_TRUE(same_bytes(std::string("a\0b", 3), std::string_view("a\0b", 3)));
  EXPECT_FALSE(same_bytes(std::string("a\0b", 3), "a"));
  EXPECT_TRUE(same_bytes("", Glib::ustring()));
}

TEST(BeginsWith, ComparesTheBytesOfTheBeginning)
{
  EXPECT_TRUE(begins_with(Glib::ustring("reef fish"), "reef"));
  EXPECT_TRUE(begins_with("reef", std::string("reef")));
  EXPECT_TRUE(begins_with("reef", ""));
  EXPECT_FALSE(begins_with("reef", "reefs"));
  EXPECT_FALSE(begins_with("a reef", "reef"));
  EXPECT_FALSE(begins_with("Reef", "reef"));
  EXPECT_FALSE(begins_with("\u00e9", "e\u0301"));
}

TEST(Contains, FindsThePartAnywhere)
{
  EXPECT_TRUE(contains(Glib::ustring("a reef fish"), "reef"));
  EXPECT_TRUE(contains("reef", ""));
  EXPECT_FALSE(contains("reef", "Reef"));
  EXPECT_FALSE(contains("", "reef"));
}

TEST(Strchrnul, ReturnsTheFirstSuchCharacterOrTheEnd)
{
  const char* const text = "abcb";
  for (const int c : std::initializer_list<int>{'a', 'b', 'x', '\0', 'b' + 256, 'x' + 256}) {
    const auto byte = static_cast<unsigned char>(c);
    const char* const expected = text + (byte == 'a' ? 0 : byte == 'b' ? 1 : 4);
    EXPECT_EQ(expected, strchrnul(text, c)) << c;
    EXPECT_EQ(expected, find_or_end(text, c)) << c; // replaces strchrnul() where it is missing
  }
  EXPECT_STREQ("", strchrnul("", 'a'));
  EXPECT_STREQ("", find_or_end("", 'a'));
}
