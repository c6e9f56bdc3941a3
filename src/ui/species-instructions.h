#pragma once

#include <glibmm/ustring.h>

// Return the text as markup in one of the two shades of rare species.
Glib::ustring rarecolor(const Glib::ustring& text);  // rarity 1
Glib::ustring rarecolor2(const Glib::ustring& text); // rarity 2 and above

// Returns the meaning of the shade of a species as plain text, or an empty text if it has no
// shade. The meaning of a rarity depends on `max_rarity`, the highest one of the region.
Glib::ustring rarity_note(int rarity, int max_rarity);

// Returns the instructions on the Listed Species page as markup. They explain the shades of
// the region's rows. If no survey type is chosen, they only ask the user to choose one.
Glib::ustring species_instructions(bool type_chosen, int max_rarity, bool has_spanish);
