#include "core/markup.h"
#include "ui/species-instructions.h"

#include <gtest/gtest.h>

namespace {

const char* const prompt =
    "Please select a survey location and type on the Survey Info Part 1 tab.";
const char* const unshaded = "Here you'll find the more common fish species.  If you don't see it "
                             "here, try the next tab, Unlisted Species.";
const char* const one_shade =
    "Here you'll find the more common fish species.  If you don't see it here, try the next tab, "
    "Unlisted Species.\n\nSpecies that are shaded in <span background=\"#9cf\">blue</span> are "
    "very rare, often misidentified, and/or difficult to identify. Please select with care.\n";
const char* const two_shades =
    "Here you'll find the more common fish species.  If you don't see it here, try the next tab, "
    "Unlisted Species.\n\nSpecies that are shaded have limited geographic range. Please mark with "
    "care. Codes indicate:\n\n  <b>&#8226;</b>  <span background=\"#9cf\">NOT-GC: NOT found in the "
    "Gulf of California, but may be found along Central American Coast and/or the oceanic "
    "islands\n</span>  <b>&#8226;</b>  <span background=\"#c60\">ISL: Limited to one or more of "
    "the oceanic islands, incl. Galapagos, Cocos, and/or Mapelo Islands (either endemic or rare "
    "outside of the range)</span>";
const char* const two_shades_spanish =
    "Here you'll find the more common fish species.  If you don't see it here, try the next tab, "
    "Unlisted Species.\n\nSpecies that are shaded have limited geographic range. Please mark with "
    "care. Codes indicate:\n\n  <b>&#8226;</b>  <span background=\"#9cf\">NOT-GC: NOT found in the "
    "Gulf of California, but may be found along Central American Coast and/or the oceanic "
    "islands\n</span>  <b>&#8226;</b>  <span background=\"#c60\">ISL: Limited to one or more of "
    "the oceanic islands, incl. Galapagos, Cocos, and/or Mapelo Islands (either endemic or rare "
    "outside of the range)</span>\n\n<i>Para cada especies observada, se necesita marcar una sola "
    "categor&#237;a de abundancia. S&#243;lo marque las especies que con seguridad han sido "
    "identificadas. Las especies sombreadas tienen una zona de distribuci&#243;n limitada. Tengan "
    "cuidado al se&#241;alar las especies. Los c&#243;digos significan:\n\n  <b>&#8226;</b>  <span "
    "background=\"#9cf\">NOT-GC: No se encuentra en el Golfo de California, pero se puede "
    "encontrar a lo largo de las costas de Am&#233;rica Central y/o en las islas "
    "oce&#225;nicas.\n</span>  <b>&#8226;</b>  <span background=\"#c60\">ISL: Limitado a una o "
    "varias islas oce&#225;nicas tales como las Islas Gal&#225;pagos, del Coco y/o de Mapelo "
    "(especies end&#233;micas o que rara vez se encuentran fuera de su zona de "
    "distribuci&#243;n).</span></i>\n";

} // namespace

TEST(SpeciesInstructions, FollowTheRegionsRarestClass)
{
  const struct {
    const char* why;
    const char* expected;
    int max_rarity;
    bool type_chosen;
    bool has_spanish;
  } cases[] = {
      {"no survey type", prompt, 0, false, false},
      {"no survey type, two classes, Spanish names", prompt, 2, false, true},
      {"no rare species", unshaded, 0, true, false},
      {"no rare species, Spanish names", unshaded, 0, true, true},
      {"one class", one_shade, 1, true, false},
      {"one class, Spanish names", one_shade, 1, true, true},
      {"two classes", two_shades, 2, true, false},
      {"two classes, Spanish names", two_shades_spanish, 2, true, true},
      {"more classes", two_shades, 127, true, false},
  };
  for (const auto& c : cases) {
    const Glib::ustring text = species_instructions(c.type_chosen, c.max_rarity, c.has_spanish);
    EXPECT_STREQ(c.expected, text.c_str()) << c.why;
    EXPECT_TRUE(is_markup(text)) << c.why;
  }
}

TEST(RareColor, WrapsTextInTheShadeOfTheRows)
{
  EXPECT_EQ("<span background=\"#9cf\">blue</span>", rarecolor("blue"));
  EXPECT_EQ("<span background=\"#c60\">a &amp; b</span>", rarecolor2("a &amp; b"));
  EXPECT_EQ("<span background=\"#9cf\"></span>", rarecolor(""));
}

TEST(RarityNote, ExplainsTheShadeInItsRegion)
{
  EXPECT_EQ("", rarity_note(0, 2));
  EXPECT_EQ("", rarity_note(-1, 1));
  const auto starts = [](const char* words, int rarity, int max_rarity) {
    EXPECT_EQ(0U, rarity_note(rarity, max_rarity).raw().find(words)) << rarity << max_rarity;
  };
  starts("This species is very rare, often misidentified", 1, 1);
  starts("NOT-GC: NOT found in the Gulf of California", 1, 2);
  starts("ISL: Limited to one or more of the oceanic islands", 2, 2);
  starts("ISL: Limited to one or more of the oceanic islands", 3, 3);
}
