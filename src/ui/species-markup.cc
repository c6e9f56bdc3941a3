#include "ui/species-markup.h"

#include "core/c-resource.h"
#include "core/markup.h"
#include "core/text.h"

#include <pango/pango.h>

#include <array>
#include <cstdio>
#include <cstring>
#include <initializer_list>
#include <string>
#include <string_view>

namespace {

// The markup around every name of a row.
struct Wrapper {
  std::string_view front;
  std::string_view back;
};

constexpr std::string_view family_tag = "<span weight=\"bold\" fgcolor=\"blue\">";
constexpr std::string_view dark_family_tag = "<span weight=\"bold\" fgcolor=\"#99c1f1\">";

Wrapper wrapper_for(int id, int rarity)
{
  if (id < 0)
    return {family_tag, "</span>"};
  if (rarity >= 2)
    return {rarest_tag, "</span>"};
  if (rarity == 1)
    return {rare_tag, "</span>"};
  return {"", ""};
}

// The attributes that are added to draw a shade. Its colour does not change, because the page
// explains the colours.
struct DrawnShade {
  std::string_view tag;
  std::string_view attributes;
};

constexpr std::array drawn_shades{
    DrawnShade{rare_tag, " fgcolor=\"#111111\" underline=\"single\""},
    DrawnShade{rarest_tag, " fgcolor=\"#111111\" underline=\"double\""},
};

// Concatenates texts with a single allocation.
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

std::string plain_markup(const Glib::ustring& name)
{
  return contains(name, "&") ? escape_ampersands(name).raw() : name.raw();
}

std::string name_markup(const Glib::ustring& name)
{
  const std::string markup = plain_markup(name);
  return !contains(name, "<") || is_markup(markup) ? markup : escape_markup(name).raw();
}

// Returns whether both names are equal in the locale. Compares letters without accents
// directly, because a collation takes longer than everything else for a row.
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

Glib::ustring drawn_markup(const Glib::ustring& stored, bool is_dark)
{
  const std::string_view text = stored.raw();
  if (is_dark && begins_with(text, family_tag))
    return joined({dark_family_tag, text.substr(family_tag.size())});
  for (const auto& shade : drawn_shades) {
    if (begins_with(text, shade.tag)) {
      const std::size_t tag_end = shade.tag.size() - 1; // in front of its ">"
      return joined({text.substr(0, tag_end), shade.attributes, text.substr(tag_end)});
    }
  }
  return stored;
}

Glib::ustring species_id_markup(int id)
{
  std::array<char, 128> buffer;
  snprintf(buffer.data(), buffer.size(), "%04d:", id);
  return buffer.data();
}

Glib::ustring words_of_markup(const Glib::ustring& markup)
{
  if (markup.raw().find_first_of("<&") == std::string::npos)
    return markup; // the usual case
  char* words = nullptr;
  if (!pango_parse_markup(markup.c_str(), -1, 0, nullptr, &words, nullptr, nullptr))
    return markup;
  const GMemory<char> owner(words);
  return words;
}
