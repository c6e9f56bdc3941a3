#pragma once

#include <glibmm/ustring.h>

#include <string>
#include <string_view>

// The opening tags of the two shades that mark rare species: their rows, and the words
// that explain the shades.
constexpr std::string_view rare_tag = "<span background=\"#9cf\">";   // rarity 1
constexpr std::string_view rarest_tag = "<span background=\"#c60\">"; // rarity 2 and above

// The names of a species or family as its row shows them, in markup.
struct SpeciesMarkup {
  std::string common;
  std::string scientific;
  std::string both;
  std::string spanish;
};

// `id` is negative for a family. Only ampersands are escaped: data may hold
// tags. A name whose "<" makes no valid tag is escaped as a whole, so that its
// row can be read; but not a Spanish name, whose cell shows plain text.
SpeciesMarkup species_markup(int id, const Glib::ustring& common, const Glib::ustring& scientific,
                             const Glib::ustring& spanish, int rarity);

// Markup of a name or of the word "Family" as a cell draws it: its colours can be read
// on the ground of a light theme or a dark one, and a line below the name tells its
// shade apart, too: one for rarity 1, two for those above. Other markup stays as it is.
Glib::ustring drawn_markup(const Glib::ustring& stored, bool is_dark);

// A species id as the "ID" column shows it: at least four digits and a colon.
Glib::ustring species_id_markup(int id);

// What a cell shows of markup; the text itself if it cannot be parsed.
Glib::ustring words_of_markup(const Glib::ustring& markup);
