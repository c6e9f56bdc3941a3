#include "core/markup.h"

#include "core/c-resource.h"

#include <pango/pango.h>

namespace {

// The toolkit draws nothing of a text that is not UTF-8 throughout.
Glib::ustring valid_utf8(const Glib::ustring& text)
{
  if (text.validate())
    return text;
  const GMemory<char> mended(g_utf8_make_valid(text.data(), static_cast<gssize>(text.bytes())));
  return mended.get();
}

} // namespace

Glib::ustring escape_markup(const Glib::ustring& text)
{
  const Glib::ustring valid = valid_utf8(text);
  const GMemory<char> escaped(
      g_markup_escape_text(valid.data(), static_cast<gssize>(valid.bytes())));
  return escaped.get();
}

bool is_markup(const Glib::ustring& text)
{
  return text.validate() && pango_parse_markup(text.data(), static_cast<int>(text.bytes()), 0,
                                               nullptr, nullptr, nullptr, nullptr);
}

Glib::ustring readable_markup(const Glib::ustring& text)
{
  return is_markup(text) ? text : escape_markup(text);
}
