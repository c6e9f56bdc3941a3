#include "ui/species-markup.h"

#include "core/c-resource.h"
#include "core/markup.h"

#include <pango/pango.h>

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

constexpr std::string_view family_tag = "<span weight=\"bold\" fgcolor=\"blue\">";
constexpr std::string_view rare_tag = "<span background=\"#9cf\">";
constexpr std::string_view rarest_tag = "<span background=\"#c60\">";

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

// What a tag is drawn as. The shades keep their colours, which the page explains.
struct DrawnTag {
  std::string_view stored;
  std::string_view on_light;
  std::string_view on_dark;
};

constexpr std::string_view drawn_rare =
    "<span background=\"#9cf\" fgcolor=\"#111111\" underline=\"single\">";
constexpr std::string_view drawn_rarest =
    "<span background=\"#c60\" fgcolor=\"#111111\" underline=\"double\">";
constexpr std::array drawn_tags{
    DrawnTag{family_tag, family_tag, "<span weight=\"bold\" fgcolor=\"#99c1f1\">"},
    DrawnTag{rare_tag, drawn_rare, drawn_rare},
    DrawnTag{rarest_tag, drawn_rarest, drawn_rarest},
};

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

Glib::ustring drawn_markup(const Glib::ustring& stored, bool is_dark)
{
  const std::string_view text = stored.raw();
  for (const auto& tag : drawn_tags)
    if (text.substr(0, tag.stored.size()) == tag.stored)
      return joined({is_dark ? tag.on_dark : tag.on_light, text.substr(tag.stored.size())});
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
    return markup; // as most names are
  char* words = nullptr;
  if (!pango_parse_markup(markup.c_str(), -1, 0, nullptr, &words, nullptr, nullptr))
    return markup;
  const GMemory<char> owner(words);
  return words;
}
