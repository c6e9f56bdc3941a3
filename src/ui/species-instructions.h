#pragma once

#include <glibmm/ustring.h>

// Text in the two shades that rows of rare species have.
Glib::ustring rarecolor(const Glib::ustring& text);  // rarity 1
Glib::ustring rarecolor2(const Glib::ustring& text); // rarity 2 and above

// The Listed Species page's explanation of shaded rows, in markup.
Glib::ustring species_instructions(bool type_chosen, int max_rarity, bool has_spanish);
