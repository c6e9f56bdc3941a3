#include "core/markup.h"

#include <gtest/gtest.h>

TEST(Markup, PlainWordsAreEscaped)
{
  EXPECT_EQ("Tom &amp; &lt;Jerry&gt;", escape_markup("Tom & <Jerry>").raw());
  EXPECT_EQ("", escape_markup("").raw());
}

TEST(Markup, EscapedAmpersandsAreNotEscapedAgain)
{
  EXPECT_EQ("a &amp; <b>b</b> &amp;&amp; c", escape_ampersands("a & <b>b</b> && c").raw());
  EXPECT_EQ("&amp;amp;", escape_ampersands("&amp;").raw());
}

TEST(Markup, ValidMarkupIsTold)
{
  const struct {
    const char* text;
    bool expected;
  } cases[] = {
      {"plain", true},
      {"<b>bold</b> &amp; more", true},
      {"see <a href=\"http://x.example/?a=1&amp;b=2\">x</a>", true},
      {"<a href=\"http://x.example/?a=1&b=2\">x</a>", false},
      {"<a name=\"x\">x</a>", false},
      {"<nonsense>x</nonsense>", false},
      {"a < b", false},
      {"a & b", false},
      {"<b>open", false},
      {"cut \xc3", false},
      {"", true},
  };
  for (const auto& c : cases)
    EXPECT_EQ(c.expected, is_markup(c.text)) << c.text;
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
