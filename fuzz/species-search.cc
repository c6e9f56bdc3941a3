// Target: the species search. The first line of the input is the search text, the second line is
// the chosen label, and the other lines are cells of the table.
#include "ui/species-search.h"

#include "core/number.h"

#include "target.h"

namespace {

// Returns valid UTF-8, as in the program's entry and tables.
Glib::ustring text_of(const std::string& line)
{
  return Glib::ustring(line).make_valid();
}

bool finds_as_characters(const Glib::ustring& cell, const std::vector<Glib::ustring>& words)
{
  for (const auto& word : words)
    if (cell.find(word) == Glib::ustring::npos)
      return false;
  return true;
}

void search_cell(const Glib::ustring& cell, const std::vector<Glib::ustring>& words)
{
  const Glib::ustring lower_case = cell.lowercase();
  require(contains_all_words(lower_case.raw(), words) == finds_as_characters(lower_case, words),
          "the comparison of bytes finds the same as that of characters");
  const int id = to_int(cell);
  require(is_searched_code(id, words) == (id == to_int(words.front())),
          "the searched code is the number of the first word");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
  const auto lines = lines_of(bytes_of(data, size));
  const Glib::ustring search = text_of(lines.front()).lowercase();
  const Glib::ustring label = lines.size() > 1 ? text_of(lines[1]) : Glib::ustring();
  const SearchMode mode = search_mode(search, label);
  require((mode.by == SEARCH_BY_ALL) == (search.raw() == "__all__"),
          "only __all__ searches for all species");

  const auto words = split_search_words(search);
  std::string joined;
  for (const auto& word : words)
    joined += (joined.empty() && &word == &words.front() ? "" : " ") + word.raw();
  require(joined == search.raw(), "no piece of the search is lost");
  require(!describe_search(search, words).empty(), "a search can be traced");
  for (std::size_t i = 2; i < lines.size(); ++i)
    search_cell(text_of(lines[i]), words);
  return 0;
}
