#include "ui/species-markup.h"

#include "core/markup.h"

#include <array>
#include <cstdio>
#include <cstring>
#include <string>

namespace {

// What goes around every name of a row.
struct Wrapper {
  const char* front;
  const char* back;
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

std::string wrapped(const Wrapper& wrapper, const std::string& markup)
{
  return wrapper.front + markup + wrapper.back;
}

std::string name_markup(const Glib::ustring& name)
{
  if (name.raw().find('<') == std::string::npos)
    return escape_ampersands(name).raw();
  const Glib::ustring markup = escape_ampersands(name);
  return is_markup(markup) ? markup.raw() : escape_markup(name).raw();
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
  const Wrapper wrapper = wrapper_for(id, rarity);
  const std::string shown_common = name_markup(common);
  const std::string shown_scientific = name_markup(scientific);
  std::string both = common.empty() ? shown_scientific : shown_common;
  if (!common.empty() && !scientific.empty() && !are_equal(common, scientific))
    both += " <i>(" + shown_scientific + ")</i>";
  return {wrapped(wrapper, shown_common), wrapped(wrapper, shown_scientific),
          wrapped(wrapper, both), wrapped(wrapper, escape_ampersands(spanish).raw())};
}

Glib::ustring species_id_markup(int id)
{
  std::array<char, 128> buffer;
  snprintf(buffer.data(), buffer.size(), "%04d:", id);
  return buffer.data();
}
