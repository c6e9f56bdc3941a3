#include "core/displayed-text.h"
#include "core/markup.h"

#include <gtest/gtest.h>

namespace {

std::string times(int count, const std::string& text)
{
  std::string all;
  for (int i = 0; i < count; ++i)
    all += text;
  return all;
}

const char* const dots = "\u2026";

} // namespace

TEST(DisplayedText, IsTheCompleteTextIfItIsShort)
{
  for (const std::string text : {"", "Miller", "a\nb", "<b>&", "Núñez", "1234567890"})
    EXPECT_EQ(text, displayed_text(text, 10).raw());
}

TEST(DisplayedText, EndsInDotsAfterTheLimitOfCharacters)
{
  EXPECT_EQ(times(10, "w") + dots, displayed_text(times(11, "w"), 10).raw());
  EXPECT_EQ(times(10, "ñ"), displayed_text(times(10, "ñ"), 10).raw());
  EXPECT_EQ(times(10, "ñ") + dots, displayed_text(times(4000000, "ñ"), 10).raw());
  EXPECT_TRUE(displayed_text(times(20, "\xff"), 10).validate());
  EXPECT_EQ(longest_displayed_text + 1, displayed_text(times(3500, "w")).size());
}

TEST(DisplayedText, InASingleLineHasNoLineEnds)
{
  EXPECT_EQ("a b c d e", displayed_line("a\nb\rc\td\u2028e").raw());
  EXPECT_EQ(times(10, " ") + dots, displayed_line(times(4000000, "\n"), 10).raw());
  EXPECT_EQ(longest_displayed_line + 1, displayed_line(times(3500, "w")).size());
}

TEST(DisplayedMarkup, StaysUnchangedIfItIsShortAndSetsNoSizes)
{
  for (const std::string text :
       {"", "a &amp; b", "<b>Reef</b>, <i>shallow</i>", "<span fgcolor=\"red\">x</span>",
        "<a href=\"https://example.org\" title=\"y\">x</a>", "<span weight='bold'>x</span>",
        "<markup><b>x</b></markup>"})
    EXPECT_EQ(text, displayed_markup(text).raw());
}

TEST(DisplayedMarkup, ShowsTextThatIsNotMarkupLiterally)
{
  EXPECT_EQ("Hall &amp; &lt;x", displayed_markup("Hall & <x").raw());
  EXPECT_EQ("&amp;&amp;" + std::string(dots), displayed_markup("&&&", 2).raw());
}

TEST(DisplayedMarkup, IsTruncatedBetweenCharactersWithItsTagsClosed)
{
  const struct {
    const char* markup;
    std::string expected;
  } cases[] = {
      {"<b>abc</b>def", std::string("<b>abc</b>d") + dots},
      {"<b>ab<i>cdef</i>g</b>h", std::string("<b>ab<i>cd") + dots + "</i></b>"},
      {"abcd<b></b>", "abcd<b></b>"},
      {"abcd<b>e</b><i>f</i>", std::string("abcd<b>") + dots + "</b>"},
      {"a&amp;b&lt;c", std::string("a&amp;b&lt;") + dots},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.expected, displayed_markup(c.markup, 4).raw()) << c.markup;
    EXPECT_TRUE(is_label_markup(c.expected)) << c.markup;
  }
}

TEST(DisplayedMarkup, SetsNoSizes)
{
  const struct {
    const char* markup;
    const char* expected;
  } cases[] = {
      {"<span size=\"1000000000\" weight=\"bold\">x</span>", "<span weight=\"bold\">x</span>"},
      {"<span font=\"Sans 9999\">x</span>", "<span>x</span>"},
      {"<span font_desc=\"9999\">x</span>", "<span>x</span>"},
      {"<span letter_spacing=\"99999999\">x</span>", "<span>x</span>"},
      {"<span rise=\"-99999999\">x</span>", "<span>x</span>"},
      {"<span line_height=\"1000\">x</span>", "<span>x</span>"},
      {"<big><big>x</big></big>", "<span><span>x</span></span>"},
      {"<sup>x</sup><sub>y</sub>", "<span>x</span><span>y</span>"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.expected, displayed_markup(c.markup).raw());
    EXPECT_TRUE(is_label_markup(c.expected)) << c.expected;
  }
}

TEST(DisplayedMarkup, KeepsALimitedNumberOfTags)
{
  const std::string nested = times(9000, "<b>") + "x" + times(9000, "</b>");
  EXPECT_EQ(times(1000, "<b>") + "x" + times(1000, "</b>"), displayed_markup(nested).raw());
  const std::string huge = times(4000000, "<b></b>");
  EXPECT_EQ(escape_markup(displayed_text(huge)).raw(), displayed_markup(huge).raw());
}
