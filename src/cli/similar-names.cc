#include "cli/similar-names.h"

#include "core/text.h"

#include <algorithm>
#include <numeric>
#include <set>
#include <string>
#include <vector>

namespace {

// The time of a comparison grows with the square of this number.
constexpr std::size_t most_letters = 200;

using Letters = std::vector<gunichar>;

Letters letters_of(const std::string& name)
{
  const Glib::ustring text(name);
  const auto size = static_cast<std::ptrdiff_t>(std::min<std::size_t>(text.size(), most_letters));
  return {text.begin(), std::next(text.begin(), size)};
}

std::multiset<Letters> words_of(const Letters& letters)
{
  std::multiset<Letters> words;
  Letters word;
  for (const gunichar letter : letters) {
    if (g_unichar_isalnum(letter)) {
      word.push_back(letter);
    } else if (!word.empty()) {
      words.insert(word);
      word.clear();
    }
  }
  if (!word.empty())
    words.insert(word);
  return words;
}

Letters digits_of(const Letters& letters)
{
  Letters digits;
  std::copy_if(letters.begin(), letters.end(), std::back_inserter(digits), g_unichar_isdigit);
  return digits;
}

bool has_all_words(const std::multiset<Letters>& all, const std::multiset<Letters>& some)
{
  return !some.empty() && std::includes(all.begin(), all.end(), some.begin(), some.end());
}

// Returns the smallest number of letters to insert, remove or replace (Levenshtein distance).
std::size_t edit_distance(const Letters& from, const Letters& to)
{
  std::vector<std::size_t> row(to.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < from.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i + 1;
    for (std::size_t j = 0; j < to.size(); ++j) {
      const std::size_t replaced = diagonal + (from[i] == to[j] ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({replaced, row[j] + 1, row[j + 1] + 1});
    }
  }
  return row.back();
}

} // namespace

std::string compared_name(const Glib::ustring& name)
{
  const Glib::ustring text = name.validate() ? name : name.make_valid();
  return trim_ws(text.normalize().casefold()).raw();
}

bool are_similar_names(const Glib::ustring& one, const Glib::ustring& other)
{
  const Letters a = letters_of(compared_name(one));
  const Letters b = letters_of(compared_name(other));
  if (digits_of(a) != digits_of(b))
    return false;
  const auto words_a = words_of(a);
  const auto words_b = words_of(b);
  return has_all_words(words_a, words_b) || has_all_words(words_b, words_a) ||
         3 * edit_distance(a, b) <= std::max(a.size(), b.size());
}
