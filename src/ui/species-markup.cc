#include "ui/species-markup.h"

#include "core/markup.h"

#include <array>
#include <cstdio>
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

Glib::ustring wrapped(const Wrapper& wrapper, const Glib::ustring& markup)
{
  return wrapper.front + markup + wrapper.back;
}

Glib::ustring name_markup(const Glib::ustring& name)
{
  const Glib::ustring markup = escape_ampersands(name);
  const bool has_tags = name.raw().find('<') != std::string::npos;
  return has_tags && !is_markup(markup) ? escape_markup(name) : markup;
}

Glib::ustring both_names_markup(const Glib::ustring& common, const Glib::ustring& scientific)
{
  if (scientific.empty() || scientific == common)
    return name_markup(common);
  if (common.empty())
    return name_markup(scientific);
  return name_markup(common) + " <i>(" + name_markup(scientific) + ")</i>";
}

} // namespace

SpeciesMarkup species_markup(int id, const Glib::ustring& common, const Glib::ustring& scientific,
                             const Glib::ustring& spanish, int rarity)
{
  const Wrapper wrapper = wrapper_for(id, rarity);
  return {wrapped(wrapper, name_markup(common)), wrapped(wrapper, name_markup(scientific)),
          wrapped(wrapper, both_names_markup(common, scientific)),
          wrapped(wrapper, escape_ampersands(spanish))};
}

Glib::ustring species_id_markup(int id)
{
  std::array<char, 128> buffer;
  snprintf(buffer.data(), buffer.size(), "%04d:", id);
  return buffer.data();
}
