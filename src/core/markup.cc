#include "core/markup.h"

#include "core/c-resource.h"

#include <pango/pango.h>

#include <memory>
#include <regex>

namespace {

// The toolkit draws nothing of a text that is not UTF-8 throughout.
Glib::ustring valid_utf8(const Glib::ustring& text)
{
  if (text.validate())
    return text;
  const GMemory<char> mended(g_utf8_make_valid(text.data(), static_cast<gssize>(text.bytes())));
  return mended.get();
}

struct ParseContextFree {
  void operator()(GMarkupParseContext* context) const { g_markup_parse_context_free(context); }
};

bool is_well_formed(const Glib::ustring& text)
{
  const GMarkupParser look_only = {};
  const std::unique_ptr<GMarkupParseContext, ParseContextFree> context(
      g_markup_parse_context_new(&look_only, G_MARKUP_DEFAULT_FLAGS, nullptr, nullptr));
  const std::string whole = "<markup>" + text.raw() + "</markup>";
  return g_markup_parse_context_parse(context.get(), whole.data(),
                                      static_cast<gssize>(whole.size()), nullptr) &&
         g_markup_parse_context_end_parse(context.get(), nullptr);
}

// Links are an addition of the toolkit's labels, which take them out before
// Pango sees the text.
std::string without_links(const Glib::ustring& text)
{
  static const std::regex opening("<a href=\"[^\"]*\">");
  static const std::regex closing("</a>");
  return std::regex_replace(std::regex_replace(text.raw(), opening, "<span>"), closing, "</span>");
}

} // namespace

Glib::ustring escape_markup(const Glib::ustring& text)
{
  const Glib::ustring valid = valid_utf8(text);
  const GMemory<char> escaped(
      g_markup_escape_text(valid.data(), static_cast<gssize>(valid.bytes())));
  return escaped.get();
}

// Works on bytes: an ampersand is never part of a longer character.
Glib::ustring escape_ampersands(const Glib::ustring& text)
{
  std::string bytes = text.raw();
  for (auto at = bytes.find('&'); at != std::string::npos; at = bytes.find('&', at + 5))
    bytes.insert(at + 1, "amp;");
  return bytes;
}

bool is_markup(const Glib::ustring& text)
{
  if (!text.validate() || !is_well_formed(text))
    return false;
  const std::string plain = without_links(text);
  return pango_parse_markup(plain.data(), static_cast<int>(plain.size()), 0, nullptr, nullptr,
                            nullptr, nullptr);
}

Glib::ustring readable_markup(const Glib::ustring& text)
{
  return is_markup(text) ? text : escape_markup(text);
}
