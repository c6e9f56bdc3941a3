#include "core/markup.h"
#include "ui/species-markup.h"

#include <gtest/gtest.h>

TEST(DrawnMarkup, MatchesTheThemeAndMarksShadesAlsoByLines)
{
  const struct {
    const char* why;
    const char* stored;
    const char* on_light;
    const char* on_dark;
  } cases[] = {
      {"plain", "Lingcod &amp; co", "Lingcod &amp; co", "Lingcod &amp; co"},
      {"empty", "", "", ""},
      {"family", "<span weight=\"bold\" fgcolor=\"blue\">Gobies</span>",
       "<span weight=\"bold\" fgcolor=\"blue\">Gobies</span>",
       "<span weight=\"bold\" fgcolor=\"#99c1f1\">Gobies</span>"},
      {"rare", "<span background=\"#9cf\">Cero <i>(x)</i></span>",
       "<span background=\"#9cf\" fgcolor=\"#111111\" underline=\"single\">Cero <i>(x)</i></span>",
       "<span background=\"#9cf\" fgcolor=\"#111111\" underline=\"single\">Cero <i>(x)</i></span>"},
      {"rarest", "<span background=\"#c60\">Cero</span>",
       "<span background=\"#c60\" fgcolor=\"#111111\" underline=\"double\">Cero</span>",
       "<span background=\"#c60\" fgcolor=\"#111111\" underline=\"double\">Cero</span>"},
      {"tags of the data", "<i>Cero</i>", "<i>Cero</i>", "<i>Cero</i>"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.on_light, drawn_markup(c.stored, false).raw()) << c.why;
    EXPECT_EQ(c.on_dark, drawn_markup(c.stored, true).raw()) << c.why;
  }
}

TEST(SpeciesMarkup, ShowsBothNamesIfTheyDiffer)
{
  const struct {
    const char* why;
    const char* common;
    const char* scientific;
    const char* expected;
  } cases[] = {
      {"two names", "Lingcod", "Ophiodon elongatus", "Lingcod <i>(Ophiodon elongatus)</i>"},
      {"no scientific name", "Lingcod", "", "Lingcod"},
      {"one name twice", "Gobiidae", "Gobiidae", "Gobiidae"},
      {"no common name", "", "Ophiodon elongatus", "Ophiodon elongatus"},
      {"no name at all", "", "", ""},
      {"one name twice, with an ampersand", "A & B", "A & B", "A &amp; B"},
      {"ampersands in both", "A & B", "C&D", "A &amp; B <i>(C&amp;D)</i>"},
      {"an ampersand and its entity", "A & B", "A &amp; B", "A &amp; B <i>(A &amp;amp; B)</i>"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(c.expected, species_markup(1, c.common, c.scientific, "", 0).both) << c.why;
}

TEST(SpeciesMarkup, EscapesAmpersandsAndNothingElse)
{
  const struct {
    const char* name;
    const char* expected;
  } cases[] = {
      {"", ""},
      {"&", "&amp;"},
      {"&&", "&amp;&amp;"},
      {"a&b&c", "a&amp;b&amp;c"},
      {"end&", "end&amp;"},
      {"&lt;", "&amp;lt;"},
      {"Jurel \"ojón\" & > 'co'", "Jurel \"ojón\" &amp; > 'co'"},
      {"<i>Sebastes</i> & kin", "<i>Sebastes</i> &amp; kin"},
  };
  for (const auto& c : cases) {
    const SpeciesMarkup names = species_markup(1, c.name, c.name, c.name, 0);
    EXPECT_EQ(c.expected, names.common) << c.name;
    EXPECT_EQ(c.expected, names.scientific) << c.name;
    EXPECT_EQ(c.expected, names.both) << c.name;
    EXPECT_EQ(c.expected, names.spanish) << c.name;
  }
}

TEST(SpeciesMarkup, ShadesByRarityAndMakesFamiliesBoldBlue)
{
  const struct {
    int id;
    int rarity;
    const char* expected;
  } cases[] = {
      {12, 0, "Name"},
      {12, -1, "Name"},
      {12, -128, "Name"},
      {12, 1, "<span background=\"#9cf\">Name</span>"},
      {0, 1, "<span background=\"#9cf\">Name</span>"},
      {12, 2, "<span background=\"#c60\">Name</span>"},
      {12, 3, "<span background=\"#c60\">Name</span>"},
      {12, 127, "<span background=\"#c60\">Name</span>"},
      {-1, 0, "<span weight=\"bold\" fgcolor=\"blue\">Name</span>"},
      {-1, 2, "<span weight=\"bold\" fgcolor=\"blue\">Name</span>"},
  };
  for (const auto& c : cases) {
    const SpeciesMarkup names = species_markup(c.id, "Name", "Name", "Name", c.rarity);
    EXPECT_EQ(c.expected, names.common) << c.id << ", " << c.rarity;
    EXPECT_EQ(c.expected, names.scientific) << c.id << ", " << c.rarity;
    EXPECT_EQ(c.expected, names.both) << c.id << ", " << c.rarity;
    EXPECT_EQ(c.expected, names.spanish) << c.id << ", " << c.rarity;
  }
}

TEST(SpeciesMarkup, WrapsAlsoEmptyNames)
{
  const SpeciesMarkup names = species_markup(-1, "Sculpins", "Cottidae", "", 0);
  EXPECT_EQ("<span weight=\"bold\" fgcolor=\"blue\">Sculpins <i>(Cottidae)</i></span>", names.both);
  EXPECT_EQ("<span weight=\"bold\" fgcolor=\"blue\"></span>", names.spanish);
}

TEST(SpeciesMarkup, KeepsNamesWithInvalidTagsReadable)
{
  const struct {
    const char* name;
    const char* expected;
  } cases[] = {
      {"Goby < 3 cm & co", "Goby &lt; 3 cm &amp; co"},
      {"<b>Goby", "&lt;b&gt;Goby"},
      {"Goby</b>", "Goby&lt;/b&gt;"},
      {"</span>", "&lt;/span&gt;"},
  };
  for (const auto& c : cases) {
    const SpeciesMarkup names = species_markup(1, c.name, "Gobius", "", 0);
    EXPECT_EQ(c.expected, names.common);
    EXPECT_EQ(c.expected + Glib::ustring(" <i>(Gobius)</i>"), names.both);
    EXPECT_EQ(c.expected, species_markup(1, "", c.name, "", 0).scientific);
    EXPECT_TRUE(is_markup(species_markup(1, c.name, c.name, "", 2).both)) << c.name;
    EXPECT_TRUE(is_markup(species_markup(-1, c.name, c.name, "", 0).common)) << c.name;
  }
}

TEST(SpeciesMarkup, KeepsTagsInSpanishNamesWhoseCellsShowPlainText)
{
  EXPECT_EQ("Goby < 3 cm &amp; co", species_markup(1, "", "", "Goby < 3 cm & co", 0).spanish);
}

TEST(SpeciesId, HasAtLeastFourDigitsAndAColon)
{
  EXPECT_EQ("0000:", species_id_markup(0));
  EXPECT_EQ("0012:", species_id_markup(12));
  EXPECT_EQ("9999:", species_id_markup(9999));
  EXPECT_EQ("12345:", species_id_markup(12345));
  EXPECT_EQ("2147483647:", species_id_markup(2147483647));
}
