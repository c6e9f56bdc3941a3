#include "ui/species-instructions.h"

#include "ui/species-markup.h"

#include <string>

namespace {

// The meaning of the shade in a region that has only one, then the meanings of the two shades
// in the other regions.
const char* const very_rare =
    "very rare, often misidentified, and/or difficult to identify. Please select with care.";
const char* const not_in_gulf =
    "NOT-GC: NOT found in the Gulf of California, but may be found along Central American Coast "
    "and/or the oceanic islands";
const char* const on_islands =
    "ISL: Limited to one or more of the oceanic islands, incl. Galapagos, Cocos, and/or Mapelo "
    "Islands (either endemic or rare outside of the range)";

const char* const bullet = "  <b>&#8226;</b>  ";

Glib::ustring single_shade_text()
{
  return "\n\nSpecies that are shaded in " + rarecolor("blue") + " are " + very_rare + "\n";
}

Glib::ustring two_shades_text()
{
  return Glib::ustring("\n\nSpecies that are shaded have limited geographic range. Please mark "
                       "with care. Codes indicate:\n\n") +
         bullet + rarecolor(Glib::ustring(not_in_gulf) + "\n") + bullet + rarecolor2(on_islands);
}

Glib::ustring two_shades_text_spanish()
{
  return Glib::ustring("\n\n<i>Para cada especies observada, se necesita marcar una sola "
                       "categor&#237;a de abundancia. S&#243;lo marque las especies que con "
                       "seguridad han sido identificadas. Las especies sombreadas tienen una zona "
                       "de distribuci&#243;n limitada. Tengan cuidado al se&#241;alar las "
                       "especies. Los c&#243;digos significan:\n\n") +
         bullet +
         rarecolor("NOT-GC: No se encuentra en el Golfo de California, pero se puede encontrar a "
                   "lo largo de las costas de Am&#233;rica Central y/o en las islas "
                   "oce&#225;nicas.\n") +
         bullet +
         rarecolor2("ISL: Limitado a una o varias islas oce&#225;nicas tales como las Islas "
                    "Gal&#225;pagos, del Coco y/o de Mapelo (especies end&#233;micas o que rara "
                    "vez se encuentran fuera de su zona de distribuci&#243;n).") +
         "</i>\n";
}

} // namespace

Glib::ustring rarecolor(const Glib::ustring& text)
{
  return std::string(rare_tag) + text + "</span>";
}

Glib::ustring rarecolor2(const Glib::ustring& text)
{
  return std::string(rarest_tag) + text + "</span>";
}

Glib::ustring rarity_note(int rarity, int max_rarity)
{
  if (rarity < 1)
    return "";
  if (rarity >= 2)
    return on_islands;
  return max_rarity >= 2 ? Glib::ustring(not_in_gulf)
                         : Glib::ustring("This species is ") + very_rare;
}

Glib::ustring species_instructions(bool type_chosen, int max_rarity, bool has_spanish)
{
  if (!type_chosen)
    return "Please select a survey location and type on the Survey Info Part 1 tab.";
  Glib::ustring text = "Here you'll find the more common fish species.  If you don't see it "
                       "here, try the next tab, Unlisted Species.";
  if (max_rarity < 1)
    return text;
  if (max_rarity == 1)
    return text + single_shade_text();
  return text + two_shades_text() + (has_spanish ? two_shades_text_spanish() : "");
}
