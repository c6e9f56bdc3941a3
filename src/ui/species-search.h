#pragma once

#include <glibmm/ustring.h>

#include <string>
#include <vector>

// The search in the species tables, without widgets. It is deliberately simple: it searches
// the rows' cells with their markup, so that "amp" finds a name with an ampersand.

// The texts that a search compares.
enum SearchBy {
  SEARCH_BY_COMMON_NAME = 1,
  SEARCH_BY_SCIENTIFIC_NAME = 2,
  SEARCH_BY_FAMILY_NAME = 3,
  SEARCH_BY_SPANISH_NAME = 4,
  SEARCH_BY_BOTH_NAMES = 5,
  SEARCH_BY_SPECIES_CODE = 6,
  SEARCH_BY_ALL = 7, // none: the search finds every row
};

// The kind of a search, with its name for traces.
struct SearchMode {
  SearchBy by;
  Glib::ustring name;
};

// Returns the kind of search for the chosen label of the drop-down box; common names if the
// label is unknown. The lower-cased text "__all__" finds everything with any label.
SearchMode search_mode(const Glib::ustring& lowercase_text, const Glib::ustring& label);

// Splits the text at each blank. Two blanks in a row, or a blank at an end, produce an
// empty word. A text without a blank is one word.
std::vector<Glib::ustring> split_search_words(const Glib::ustring& text);

// Returns whether the text contains every word. An empty word is in every text. REQUIRES: text
// and words are in lower case.
bool contains_all_words(const std::string& text, const std::vector<Glib::ustring>& words);

// Returns whether the number of the first word is `id`: "0012" and "12abc" are 12, and a word
// without a number is 0. Returns false if there is no word.
bool is_searched_code(int id, const std::vector<Glib::ustring>& words);

// Returns a search as traces show it: the text, then its words.
std::string describe_search(const Glib::ustring& text, const std::vector<Glib::ustring>& words);
