#pragma once

#include <glibmm/ustring.h>

#include <cstddef>
#include <string>

// Texts that are too long to be shown as a whole: the beginning and the end stay, and
// a notice between them says how many lines were left out, partial ones included. Where only
// part of one line was left out, there is just an ellipsis.

// The most bytes of a list, or of a command's output, that a message holds. What is longer
// is shortened before the message is composed, so that all words around it stay.
constexpr std::size_t longest_part = 10'000;

// Plain text of at most about `most` bytes. No character of UTF-8 is cut.
std::string shorten_text(const std::string& text, std::size_t most);

// Markup that a label can parse, of which at most about `most` bytes are shown. All tags
// and links stay; if these alone are too long, the result has none.
Glib::ustring shorten_markup(const Glib::ustring& markup, std::size_t most);
