#include "ui/species-search.h"

#include <gtest/gtest.h>

namespace {

// Returns the words between bars, as "|gray|snap|".
std::string barred(const std::vector<Glib::ustring>& words)
{
  std::string text = "|";
  for (const auto& word : words)
    text += word.raw() + "|";
  return text;
}

} // namespace

TEST(SpeciesSearch, SplitsAtEachSingleBlank)
{
  const struct {
    const char* text;
    const char* expected;
  } cases[] = {
      {"gray", "|gray|"},
      {"gray snap", "|gray|snap|"},
      {"gray  snap", "|gray||snap|"},
      {" gray", "||gray|"},
      {"gray ", "|gray||"},
      {" ", "|||"},
      {"", "||"},
      {"a\tb\nc", "|a\tb\nc|"},
      {"a\u00a0b", "|a\u00a0b|"}, // only U+0020 separates words
      {"jocú añil", "|jocú|añil|"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(c.expected, barred(split_search_words(c.text))) << c.text;
}

TEST(SpeciesSearch, RequiresEveryWordInAnyOrder)
{
  const struct {
    const char* text;
    const char* words;
    bool expected;
  } cases[] = {
      {"snapper, gray", "gray snap", true},
      {"snapper, gray", "gray snapx", false},
      {"snapper, gray", "pp", true},
      {"snapper, gray", "", true},
      {"snapper, gray", "  ", true},
      {"snapper, gray", " gray ", true},
      {"snapper, gray", "gray gray gray", true},
      {"", "", true},
      {"", "a", false},
      {"snapper", "snapper,", false},
      {"pargo jocú", "ú", true},
      {"pargo jocú", "u", false},
      {"dog &amp; cat", "&", true},
      {"dog &amp; cat", "amp", true},
      {"<span background=\"#c60\">x</span>", "span", true},
      {"a.c", "a*c", false},
  };
  for (const auto& c : cases)
    EXPECT_EQ(c.expected, contains_all_words(c.text, split_search_words(c.words)))
        << c.text << " / " << c.words;
  EXPECT_TRUE(contains_all_words("anything", {}));
}

TEST(SpeciesSearch, ReadsTheFirstWordAsTheNumberOfACode)
{
  const struct {
    const char* text;
    int id;
    bool expected;
  } cases[] = {
      {"12", 12, true},
      {"0012", 12, true},
      {"12abc", 12, true},
      {"12 13", 12, true},
      {"12 13", 13, false},
      {"1", 12, false},
      {"123", 12, false},
      {"abc", 0, true},
      {"abc", 12, false},
      {"", 0, true},
      {" 12", 0, true}, // the first word is empty
      {" 12", 12, false},
      {"\t12", 12, true},
      {"+12", 12, true},
      {"-12", 12, false},
      {"99999999999999999999", -1, false},
      {"4294967308", 12, false}, // 12 in 32 bits
  };
  for (const auto& c : cases)
    EXPECT_EQ(c.expected, is_searched_code(c.id, split_search_words(c.text)))
        << c.text << " / " << c.id;
  EXPECT_FALSE(is_searched_code(0, {}));
}

TEST(SpeciesSearch, FindsItsModesByTheirLabels)
{
  const struct {
    const char* text;
    const char* label;
    int expected;
    const char* name;
  } cases[] = {
      {"x", "Common Name", 1, "Common Name"},
      {"x", "Scientific Name", 2, "Scientific Name"},
      {"x", "Family Name", 3, "Family Name"},
      {"x", "Spanish Name", 4, "Spanish Name"},
      {"x", "Common + Scientific Names", 5, "Common + Scientific Names"},
      {"x", "Species Code", 6, "Species Code"},
      {"x", "species code", 1, "Unknown: species code"},
      {"x", "", 1, "Unknown: "},
      {"__all__", "Species Code", 7, "(all) Species Code"},
      {"__all__", "", 7, "(all) "},
      {"__all__ ", "Family Name", 3, "Family Name"},
      {"__all", "Family Name", 3, "Family Name"},
      {"", "Family Name", 3, "Family Name"},
  };
  for (const auto& c : cases) {
    const SearchMode mode = search_mode(c.text, c.label);
    EXPECT_EQ(c.expected, mode.by) << c.text << " / " << c.label;
    EXPECT_EQ(c.name, mode.name) << c.text << " / " << c.label;
  }
}

TEST(SpeciesSearch, IsDescribedWithItsWords)
{
  EXPECT_EQ("\"gray\" (\"gray\")", describe_search("gray", split_search_words("gray")));
  EXPECT_EQ("\"gray  snap\" (\"gray\" \"\" \"snap\")",
            describe_search("gray  snap", split_search_words("gray  snap")));
}
