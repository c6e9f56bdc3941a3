#include "core/long-text.h"
#include "core/markup.h"

#include <gtest/gtest.h>

namespace {

std::string lines(int first, int last)
{
  std::string text;
  for (int i = first; i <= last; ++i)
    text += std::to_string(i) + "\n";
  return text;
}

} // namespace

TEST(LongText, IsShownCompletelyIfItIsShortEnough)
{
  for (const std::string text : {"", "a", "12345678"}) {
    EXPECT_EQ(text, shorten_text(text, 8));
    EXPECT_EQ(text, shorten_markup(text, 8).raw());
  }
}

TEST(LongText, LosesWholeLinesInTheMiddleAndSaysHowMany)
{
  EXPECT_EQ(lines(100, 102) + "\u2026 94 lines left out \u2026\n" + lines(197, 199),
            shorten_text(lines(100, 199), 24));
  EXPECT_EQ("aaaa\n\u2026 1 line left out \u2026\ncccc\n", shorten_text("aaaa\nbbbb\ncccc\n", 12));
}

TEST(LongText, LosesThePartOfALineThatIsTooLong)
{
  EXPECT_EQ("aaaa\u2026cccc", shorten_text("aaaabbbbbbcccc", 8));
  EXPECT_EQ("aaaa\n\u2026 2 lines left out \u2026\ncccc", shorten_text("aaaabbb\nbbbcccc", 8));
}

TEST(LongText, NeverSplitsACharacter)
{
  for (std::size_t most = 0; most < 40; ++most) {
    const std::string shown = shorten_text("ééé日日日🐟🐟🐟🐟éé日日é", most);
    EXPECT_TRUE(Glib::ustring(shown).validate()) << most << shown;
    EXPECT_LE(shown.size(), most + 3) << most;
  }
}

TEST(LongText, KeepsBothEndsOfATextThatIsNotUtf8)
{
  const std::string bytes(100, '\x80');
  EXPECT_GE(shorten_text(bytes, 40).size(), 30U);
}

TEST(LongText, KeepsTagsAndLinksOfMarkup)
{
  EXPECT_EQ("<b>100\n101</b>\n<a href=\"x?a&amp;b\" title=\"&lt;\">\u2026 97 lines left out "
            "\u2026\n</a><i></i>199&amp;\n",
            shorten_markup("<b>100\n101</b>\n<a href='x?a&amp;b' title='&lt;'>" + lines(102, 198) +
                               "</a><i/>199&amp;\n",
                           16)
                .raw());
}

TEST(LongText, CountsOnlyWhatMarkupShows)
{
  const std::string markup = "<span foreground=\"red\">&amp;&amp;&amp;&amp;</span>";
  EXPECT_EQ(markup, shorten_markup(markup, 10).raw());
}

TEST(LongText, RemovesMarkupThatIsLongerThanItsText)
{
  std::string tags;
  for (int i = 0; i < 1000; ++i)
    tags += "<b>&lt;</b>";
  const Glib::ustring shown = shorten_markup(tags, 100);
  EXPECT_TRUE(is_label_markup(shown));
  EXPECT_EQ(std::string::npos, shown.raw().find("<b>"));
  EXPECT_LE(shown.bytes(), 1000U);
}

TEST(LongText, IsValidMarkupWhateverIsOmitted)
{
  const std::string markup =
      "<markup>See <b>é&amp;<i>日</i>&lt;\n</b><a href=\"h\">x\ny\nz</a>&#x1b;</markup>";
  ASSERT_TRUE(is_label_markup(markup));
  for (std::size_t most = 0; most < 30; ++most)
    EXPECT_TRUE(is_label_markup(shorten_markup(markup, most))) << most;
}
