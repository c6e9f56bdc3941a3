#pragma once

#include <glibmm/ustring.h>

#include <string>

// These functions limit texts for display. A text from a user, a data file, a survey or a
// server may have any length, and its markup may set sizes. But the toolkit's time to break
// a text into lines grows with the square of its length, and a widget of more than 32,767
// pixels ends the program. Models, entries and documents keep the complete text.

// Limits in characters: for a text of several lines, and for a text in a single line.
constexpr std::size_t longest_displayed_text = 500;
constexpr std::size_t longest_displayed_line = 80;

// Returns the plain text `text`. If it has more than `most` characters, an ellipsis
// replaces the rest.
Glib::ustring displayed_text(const Glib::ustring& text, std::size_t most = longest_displayed_text);

// Like displayed_text(), but in a single line: each line end, tab or other control character
// becomes a blank.
Glib::ustring displayed_line(const Glib::ustring& text, std::size_t most = longest_displayed_line);

// Returns label markup that shows `text`, truncated like displayed_text(). If `text` is valid
// markup, removes the tags and attributes that set sizes, and keeps the others up to a limit.
// If it is not valid or is very long, the returned markup shows `text` literally.
Glib::ustring displayed_markup(const Glib::ustring& text,
                               std::size_t most = longest_displayed_text);
