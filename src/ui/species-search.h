#pragma once

#include <glibmm/ustring.h>

#include <string>
#include <vector>

// Searching the species tables, as far as that needs no widget. It is simple on
// purpose: the texts searched are the rows' cells with their markup, so that
// "amp" finds a name with an ampersand.

// What a search looks at.
enum SearchBy {
  SEARCH_BY_COMMON_NAME = 1,
  SEARCH_BY_SCIENTIFIC_NAME = 2,
  SEARCH_BY_FAMILY_NAME = 3,
  SEARCH_BY_SPANISH_NAME = 4,
  SEARCH_BY_BOTH_NAMES = 5,
  SEARCH_BY_SPECIES_CODE = 6,
  SEARCH_BY_ALL = 7, // at nothing: every row is found
};

// What to look at, with its name for traces.
struct SearchMode {
  SearchBy by;
  Glib::ustring name;
};

// By the chosen label of the drop-down box; an unknown one means common names.
// The lower-cased text "__all__" asks for everything whatever the label.
SearchMode search_mode(const Glib::ustring& lowercase_text, const Glib::ustring& label);

// The pieces between single blanks: two in a row, or one at an end, give an
// empty word. Text without a blank is one word.
std::vector<Glib::ustring> split_search_words(const Glib::ustring& text);

// Whether every word stands somewhere in the text; an empty word always does.
// Text and words are lower-cased already.
bool contains_all_words(const std::string& text, const std::vector<Glib::ustring>& words);

// Whether the first word is that species code, as a number: "0012" and "12abc"
// are 12, and a word without a number is 0. False without a word.
bool is_searched_code(int id, const std::vector<Glib::ustring>& words);

// A search as traces show it: the text, then its words.
std::string describe_search(const Glib::ustring& text, const std::vector<Glib::ustring>& words);
