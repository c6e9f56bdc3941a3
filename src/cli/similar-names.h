#pragma once

#include <glibmm/ustring.h>

// Returns the form of a name for comparisons. It ignores case, leading and trailing blanks, and
// differences between equivalent Unicode sequences.
std::string compared_name(const Glib::ustring& name);

// Returns whether `other` can be a correction or extension of the name `one`: whether one name
// has all words of the other, or at most a third of the letters differ. Names with different
// numbers are never similar: "Site 1" is not "Site 2".
bool are_similar_names(const Glib::ustring& one, const Glib::ustring& other);
