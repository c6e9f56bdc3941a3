#pragma once

#include <glibmm/ustring.h>

// A name in the form in which names are compared: without regard to case, to blanks
// around it, and to the ways in which Unicode writes one character.
std::string compared_name(const Glib::ustring& name);

// Whether two names can be those of one thing whose name was corrected or extended: the
// words of one are all in the other, or at most a third of the letters differ. Names with
// other numbers in them are never similar: "Site 1" is not "Site 2".
bool are_similar_names(const Glib::ustring& one, const Glib::ustring& other);
