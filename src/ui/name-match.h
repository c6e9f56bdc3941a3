#pragma once

#include <glibmm/ustring.h>

#include <string>

// How well a name matches the text that the user types to find it. A better match has a
// smaller number.
enum NameMatch {
  MATCHES_START = 0, // the name begins with the text
  MATCHES_WORD = 1,  // a later word of the name begins with the text
  MATCHES_NOT = 2,
};

// Returns the text without case and accents, so that "angel" finds "Ángel".
std::string folded_name(const Glib::ustring& text);

// Returns how well `name` matches `text`. An empty text matches nothing. A word begins after
// a character that is neither letter nor digit. REQUIRES: both are results of folded_name().
NameMatch match_name(const std::string& name, const std::string& text);
