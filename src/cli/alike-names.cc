#include "cli/alike-names.h"

#include <glibmm/ustring.h>

#include <algorithm>
#include <utility>

#include "cli/table-check.h"

namespace {

char lower_ascii(char c)
{
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

void append_without_blanks(const std::string& text, std::string& key)
{
  for (const char c : text)
    if (c != ' ')
      key += lower_ascii(c);
}

// Appends the form of a name that is equal for names that differ only in case or blanks. Most
// names are ASCII and do not need the library's tables.
void append_folded(const std::string& name, std::string& key)
{
  const bool is_ascii =
      std::all_of(name.begin(), name.end(), [](unsigned char c) { return c < 0x80; });
  append_without_blanks(is_ascii ? name : Glib::ustring(name).casefold().raw(), key);
}

} // namespace

void AlikeNames::add(TableCheck& table, const std::string& name, const std::string& list)
{
  if (name.empty())
    return;
  std::string key = list + '\n';
  append_folded(name, key);
  const auto [known, is_new] = names.try_emplace(std::move(key), Named{name, table.line()});
  if (is_new)
    return;
  const Named& first = known->second;
  const std::string other = "the " + std::string(what) + " in line " + std::to_string(first.line);
  if (first.name != name) {
    table.fault(DataRule::NAMES_ALIKE,
                quoted(name) + " differs from " + other +
                    " only by case or blanks: readers take them for the same name");
  } else if (equal == Equal::FAULT) {
    table.fault(DataRule::NAME_TWICE,
                quoted(name) + " is also the name of " + other + ": users cannot distinguish them");
  }
}
