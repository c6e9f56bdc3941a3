#include "ui/species-search.h"

#include "core/number.h"
#include "core/text.h"

#include <algorithm>

namespace {

const struct {
  const char* label;
  SearchBy by;
} labelled_modes[] = {
    {"Common Name", SEARCH_BY_COMMON_NAME},   {"Scientific Name", SEARCH_BY_SCIENTIFIC_NAME},
    {"Spanish Name", SEARCH_BY_SPANISH_NAME}, {"Common + Scientific Names", SEARCH_BY_BOTH_NAMES},
    {"Family Name", SEARCH_BY_FAMILY_NAME},   {"Species Code", SEARCH_BY_SPECIES_CODE},
};

std::string quoted(const Glib::ustring& text)
{
  return "\"" + text.raw() + "\"";
}

} // namespace

SearchMode search_mode(const Glib::ustring& lowercase_text, const Glib::ustring& label)
{
  if (same_bytes(lowercase_text, "__all__"))
    return {SEARCH_BY_ALL, "(all) " + label};
  for (const auto& mode : labelled_modes)
    if (same_bytes(label, mode.label))
      return {mode.by, label};
  return {SEARCH_BY_COMMON_NAME, "Unknown: " + label};
}

std::vector<Glib::ustring> split_search_words(const Glib::ustring& text)
{
  const std::string& bytes = text.raw();
  std::vector<Glib::ustring> words;
  std::size_t start = 0;
  for (auto blank = bytes.find(' '); blank != std::string::npos; blank = bytes.find(' ', start)) {
    words.emplace_back(bytes.substr(start, blank - start));
    start = blank + 1;
  }
  words.emplace_back(bytes.substr(start));
  return words;
}

// Compares bytes, which gives the same result as characters and is much faster.
bool contains_all_words(const std::string& text, const std::vector<Glib::ustring>& words)
{
  return std::all_of(words.begin(), words.end(),
                     [&](const Glib::ustring& word) { return contains(text, word); });
}

bool is_searched_code(int id, const std::vector<Glib::ustring>& words)
{
  return !words.empty() && to_int(words.front()) == id;
}

std::string describe_search(const Glib::ustring& text, const std::vector<Glib::ustring>& words)
{
  std::string description = quoted(text) + " (";
  for (const auto& word : words)
    description += (&word == &words.front() ? "" : " ") + quoted(word);
  return description + ")";
}
