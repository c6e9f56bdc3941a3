#include "ui/species-markup.h"

#include "core/markup.h"

#include <array>
#include <cstdio>
#include <cstring>
#include <initializer_list>
#include <string>
#include <string_view>

namespace {

// What goes around every name of a row.
struct Wrapper {
  std::string_view front;
  std::string_view back;
};

Wrapper wrapper_for(int id, int rarity)
{
  if (id < 0)
    return {"<span weight=\"bold\" fgcolor=\"blue\">", "</span>"};
  if (rarity >= 2)
    return {"<span background=\"#c60\">", "</span>"};
  if (rarity == 1)
    return {"<span background=\"#9cf\">", "</span>"};
  return {"", ""};
}

// Texts one behind the other, in memory that is taken once.
std::string joined(std::initializer_list<std::string_view> texts)
{
  std::size_t size = 0;
  for (const auto text : texts)
    size += text.size();
  std::string whole;
  whole.reserve(size);
  for (const auto text : texts)
    whole += text;
  return whole;
}

bool has(const Glib::ustring& name, char character)
{
  return name.raw().find(character) != std::string::npos;
}

std::string plain_markup(const Glib::ustring& name)
{
  return has(name, '&') ? escape_ampersands(name).raw() : name.raw();
}

std::string name_markup(const Glib::ustring& name)
{
  const std::string markup = plain_markup(name);
  return !has(name, '<') || is_markup(markup) ? markup : escape_markup(name).raw();
}

// Whether the locale takes both for one name. Letters without accents need not be
// decomposed to see that, which takes longer than all else that a row needs.
bool are_equal(const Glib::ustring& one, const Glib::ustring& other)
{
  return one.is_ascii() && other.is_ascii() ? std::strcoll(one.c_str(), other.c_str()) == 0
                                            : one == other;
}

} // namespace

SpeciesMarkup species_markup(int id, const Glib::ustring& common, const Glib::ustring& scientific,
                             const Glib::ustring& spanish, int rarity)
{
  const auto [front, back] = wrapper_for(id, rarity);
  const std::string shown_common = name_markup(common);
  const std::string shown_scientific = name_markup(scientific);
  const auto both = [&, front = front, back = back] {
    if (common.empty() || scientific.empty() || are_equal(common, scientific))
      return joined({front, common.empty() ? shown_scientific : shown_common, back});
    return joined({front, shown_common, " <i>(", shown_scientific, ")</i>", back});
  };
  return {joined({front, shown_common, back}), joined({front, shown_scientific, back}), both(),
          joined({front, plain_markup(spanish), back})};
}

Glib::ustring species_id_markup(int id)
{
  std::array<char, 128> buffer;
  snprintf(buffer.data(), buffer.size(), "%04d:", id);
  return buffer.data();
}
