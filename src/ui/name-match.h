#pragma once

#include <glibmm/ustring.h>

#include <string>

// How well a name fits what somebody types to find it, as far as that needs no widget.

// The better the match, the smaller the number.
enum NameMatch {
  MATCHES_START = 0, // the name begins with the text
  MATCHES_WORD = 1,  // one of its later words does
  MATCHES_NOT = 2,
};

// The text as names are compared: without case and accents, so that "angel" finds "Ángel".
std::string folded_name(const Glib::ustring& text);

// Both texts are folded. An empty text matches nothing. A word begins behind anything that
// is neither letter nor digit.
NameMatch match_name(const std::string& name, const std::string& text);
