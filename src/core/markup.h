#pragma once

#include <glibmm/ustring.h>

#include <string>

// Returns Pango markup that shows the plain text `text` exactly. Each byte that is not valid
// UTF-8 becomes a replacement character, because the toolkit does not draw a text with such
// bytes.
Glib::ustring escape_markup(const Glib::ustring& text);

// The inverse of escape_markup(). Replaces each escape that escape_markup() writes with its
// character, in a single pass. Keeps everything else, including tags and stray ampersands.
std::string unescape_markup(const std::string& text);

// Returns `text` with every ampersand escaped. Tags stay as they are.
Glib::ustring escape_ampersands(const Glib::ustring& text);

// Returns whether Pango can parse `text`. The cells of a tree use the same parser, which does not
// accept links.
bool is_markup(const Glib::ustring& text);

// Returns whether a label or a dialog can parse `text`: Pango markup with links.
bool is_label_markup(const Glib::ustring& text);

// Returns `text` if it is valid markup for a label. Otherwise returns markup that shows it
// literally, so that a stray "<" or "&" does not leave a label or dialog empty.
Glib::ustring readable_markup(const Glib::ustring& text);

// Returns the plain text of `text` if it is markup, else `text` unchanged.
Glib::ustring without_markup(const Glib::ustring& text);
