#include "core/markup.h"

#include <gtest/gtest.h>

TEST(Markup, PlainWordsAreEscaped)
{
  EXPECT_EQ("Tom &amp; &lt;Jerry&gt;", escape_markup("Tom & <Jerry>").raw());
  EXPECT_EQ("", escape_markup("").raw());
}

TEST(Markup, UnescapingReversesEscaping)
{
  std::string every_byte;
  for (char c = 1; c < 127; ++c)
    every_byte += c;
  const std::string texts[] = {"",          "a & b",    "&amp;amp;", "&#x26;",
                               "&",         "<b>'\"",   "&lt",       "é \u0085 \u009f",
                               "\x7f \x1b", every_byte, "&am&amp;p;"};
  for (const auto& text : texts)
    EXPECT_EQ(text, unescape_markup(escape_markup(text).raw()));
}

TEST(Markup, UnescapingKeepsWhatEscapingNeverWrites)
{
  for (const std::string text : {"<b>a</b>", "a & b", "&nbsp;", "&#x26;", "&#38;", "&#x110000;",
                                 "&#xd800;", "&#x;", "&;", "&lt", "&amp"})
    EXPECT_EQ(text, unescape_markup(text));
}

TEST(Markup, EscapingAmpersandsEscapesEachOneAndKeepsTags)
{
  EXPECT_EQ("a &amp; <b>b</b> &amp;&amp; c", escape_ampersands("a & <b>b</b> && c").raw());
  EXPECT_EQ("&amp;amp;", escape_ampersands("&amp;").raw());
}

TEST(Markup, ValidMarkupIsRecognised)
{
  const struct {
    const char* text;
    bool in_a_cell;
    bool in_a_label;
  } cases[] = {
      {"plain", true, true},
      {"", true, true},
      {" ", true, true},
      {"<b>bold</b> &amp; more", true, true},
      {"see <a href=\"http://x.example/?a=1&amp;b=2\">x</a>", false, true},
      {"<b>see <a title=\"t\" href='x'>x &lt; <i>y</i></a></b>", false, true},
      {"<a href=\"http://x.example/?a=1&b=2\">x</a>", false, false},
      {"<a name=\"x\">x</a>", false, false},
      {"<a>x</a>", false, false},
      {"<a href=\"x\">never closed", false, false},
      {"<a href=\"x\"><span foreground=\"no colour\">x</span></a>", false, false},
      {"<nonsense>x</nonsense>", false, false},
      {"a < b", false, false},
      {"a & b", false, false},
      {"<b>open", false, false},
      {"</markup><b>x</b>", false, false},
      {"cut \xc3", false, false},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.in_a_cell, is_markup(c.text)) << c.text;
    EXPECT_EQ(c.in_a_label, is_label_markup(c.text)) << c.text;
  }
}

TEST(Markup, ALinkOfAnyLengthIsValid)
{
  const std::string address(300000, 'x');
  EXPECT_TRUE(is_label_markup("<a href=\"" + address + "\">x</a>"));
}

TEST(Markup, AZeroByteDoesNotTruncateTheText)
{
  EXPECT_EQ("a\ufffdb", readable_markup(std::string("a\0b", 3)).raw());
}

TEST(Markup, ReadableMarkupKeepsMarkupAndEscapesTheRest)
{
  EXPECT_EQ("<b>a</b>", readable_markup("<b>a</b>").raw());
  EXPECT_EQ("a &lt; b", readable_markup("a < b").raw());
}

TEST(Markup, TextThatIsNotUtf8StaysReadable)
{
  EXPECT_EQ("caf\u00e9 \ufffd x", readable_markup("caf\u00e9 \xff x").raw());
}

TEST(Markup, RemovingMarkupKeepsTheWords)
{
  EXPECT_EQ("Salmo & trutta", without_markup("<i>Salmo</i> &amp; <b>trutta</b>").raw());
  EXPECT_EQ("", without_markup("").raw());
}

TEST(Markup, RemovingMarkupDoesNotChangeTextThatIsNotMarkup)
{
  for (const char* text : {"a < b", "A & B", "<i>a", "</i>", "caf\xff"})
    EXPECT_EQ(text, without_markup(text).raw());
  const std::string with_zero("a\0b", 3);
  EXPECT_EQ(with_zero, without_markup(with_zero).raw());
}
