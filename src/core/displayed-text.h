#pragma once

#include <glibmm/ustring.h>

#include <string>

// Texts as far as they are displayed. A text of users, data, files or servers may have any
// length and may set sizes, but the toolkit takes time by the square of the length of what
// it breaks into lines, and a widget of more than 32,767 pixels ends the program. Models,
// entries and documents keep the whole text.

// Characters of a text that is displayed in several lines, and of one in a single line.
constexpr std::size_t longest_displayed_text = 500;
constexpr std::size_t longest_displayed_line = 80;

// Plain `text`, with dots in the place of what follows its first `most` characters.
Glib::ustring displayed_text(const Glib::ustring& text, std::size_t most = longest_displayed_text);

// The same in a single line: a line end or tab becomes a blank.
Glib::ustring displayed_line(const Glib::ustring& text, std::size_t most = longest_displayed_line);

// Markup of a label that shows `text`, by its own tags if it is valid markup and otherwise
// as it stands, cut like displayed_text(). Tags stay, but what sets sizes has no effect.
Glib::ustring displayed_markup(const Glib::ustring& text,
                               std::size_t most = longest_displayed_text);
