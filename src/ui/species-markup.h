#pragma once

#include <glibmm/ustring.h>

#include <string>
#include <string_view>

// The opening tags of the two shades for rare species. The rows of these species and the
// words that explain the shades have these tags.
constexpr std::string_view rare_tag = "<span background=\"#9cf\">";   // rarity 1
constexpr std::string_view rarest_tag = "<span background=\"#c60\">"; // rarity 2 and above

// The names of a species or family as its row shows them, as markup.
struct SpeciesMarkup {
  std::string common;
  std::string scientific;
  std::string both;
  std::string spanish;
};

// Returns the markup of a row's names. `id` is negative for a family. Escapes only ampersands,
// because data may contain tags. If a "<" is not part of a valid tag, escapes the whole name,
// so that its row is readable. A Spanish name is never escaped, because its cell shows plain
// text.
SpeciesMarkup species_markup(int id, const Glib::ustring& common, const Glib::ustring& scientific,
                             const Glib::ustring& spanish, int rarity);

// Returns the markup with which a cell draws a name or the word "Family". Its colours are
// readable in a light or a dark theme. Underlines also mark the shade: one line for rarity 1,
// two lines for a higher rarity. Other markup is returned unchanged.
Glib::ustring drawn_markup(const Glib::ustring& stored, bool is_dark);

// Returns a species id as the "ID" column shows it: at least four digits and a colon.
Glib::ustring species_id_markup(int id);

// Returns the text that a cell shows for `markup`, or `markup` if it cannot be parsed.
Glib::ustring words_of_markup(const Glib::ustring& markup);
