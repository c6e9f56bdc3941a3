#pragma once

#include <glibmm/ustring.h>

// Text in the two shades that rows of rare species have.
Glib::ustring rarecolor(const Glib::ustring& text);  // rarity 1
Glib::ustring rarecolor2(const Glib::ustring& text); // rarity 2 and above

// What the shading of one species means, in plain words; empty if it is not shaded.
// `max_rarity` is the highest of its region, on which the meaning of the lower depends.
Glib::ustring rarity_note(int rarity, int max_rarity);

// The Listed Species page's explanation of shaded rows, in markup.
Glib::ustring species_instructions(bool type_chosen, int max_rarity, bool has_spanish);
