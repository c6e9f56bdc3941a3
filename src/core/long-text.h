#pragma once

#include <glibmm/ustring.h>

#include <cstddef>
#include <string>

// These functions shorten a text that is too long to show. They keep its beginning and its
// end and put a notice between them that states the number of omitted lines, including
// partial ones. If only part of one line is omitted, the notice is an ellipsis.

// The limit, in bytes, for a list or a command's output within a message. The caller shortens
// this part before it composes the message, so that the rest of the message is not shortened.
constexpr std::size_t longest_part = 10'000;

// Returns plain text of about `most` bytes or less. Never splits a UTF-8 character.
std::string shorten_text(const std::string& text, std::size_t most);

// Returns markup that a label can parse and that shows about `most` bytes or less. Keeps all
// tags and links, or removes all of them if they alone are too long.
Glib::ustring shorten_markup(const Glib::ustring& markup, std::size_t most);
