#include "core/markup.h"

#include "core/c-resource.h"
#include "core/text.h"

#include <pango/pango.h>

#include <charconv>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace {

struct ParseContextFree {
  void operator()(GMarkupParseContext* context) const { g_markup_parse_context_free(context); }
};

std::string escaped(const char* text, std::size_t size)
{
  return GMemory<char>(g_markup_escape_text(text, static_cast<gssize>(size))).get();
}

// Returns the character of `escape`, the text between "&" and ";". Returns an empty text if
// GLib's escaping function never writes this escape. That function writes five names, and
// control characters in hexadecimal.
std::string escaped_character(std::string_view escape)
{
  static const std::map<std::string_view, const char*> names = {
      {"amp", "&"}, {"lt", "<"}, {"gt", ">"}, {"quot", "\""}, {"apos", "'"}};
  const auto name = names.find(escape);
  if (name != names.end())
    return name->second;
  if (escape.size() < 3 || !begins_with(escape, "#x"))
    return {};
  unsigned int character = 0;
  const char* const end = escape.data() + escape.size();
  const auto read = std::from_chars(escape.data() + 2, end, character, 16);
  if (read.ec != std::errc() || read.ptr != end || !g_unichar_iscntrl(character))
    return {};
  return Glib::ustring(1, character).raw();
}

// Links are an extension of the toolkit's labels, which remove them before Pango parses the
// text. The handlers below do the same: they copy the markup and write a span for a link.

bool is_link(const char** attributes)
{
  bool has_address = false;
  for (; *attributes; ++attributes) {
    const bool is_address = std::strcmp(*attributes, "href") == 0;
    if (!is_address && std::strcmp(*attributes, "title") != 0)
      return false;
    has_address = has_address || is_address;
  }
  return has_address;
}

void on_start(GMarkupParseContext*, const char* element, const char** attributes,
              const char** values, gpointer out, GError** failure)
{
  auto& text = *static_cast<std::string*>(out);
  if (std::strcmp(element, "a") == 0) {
    text += "<span>";
    if (!is_link(attributes))
      g_set_error_literal(failure, G_MARKUP_ERROR, G_MARKUP_ERROR_INVALID_CONTENT, "not a link");
    return;
  }
  text += std::string("<") + element;
  for (; *attributes; ++attributes, ++values)
    text += std::string(" ") + *attributes + "=\"" + escaped(*values, std::strlen(*values)) + "\"";
  text += ">";
}

void on_end(GMarkupParseContext*, const char* element, gpointer out, GError**)
{
  const bool is_link_end = std::strcmp(element, "a") == 0;
  *static_cast<std::string*>(out) += std::string("</") + (is_link_end ? "span" : element) + ">";
}

void on_text(GMarkupParseContext*, const char* text, gsize size, gpointer out, GError**)
{
  *static_cast<std::string*>(out) += escaped(text, size);
}

// Returns a label's markup without links; empty if the markup is not well-formed.
std::string without_links(const std::string& text)
{
  constexpr GMarkupParser handlers = {on_start, on_end, on_text, nullptr, nullptr};
  std::string out;
  const std::unique_ptr<GMarkupParseContext, ParseContextFree> context(
      g_markup_parse_context_new(&handlers, G_MARKUP_DEFAULT_FLAGS, &out, nullptr));
  const auto start = text.find_first_not_of(" \t\n\r");
  const bool has_root = start != std::string::npos && text.compare(start, 8, "<markup>") == 0;
  const std::string whole = has_root ? text : "<markup>" + text + "</markup>";
  const bool well_formed =
      g_markup_parse_context_parse(context.get(), whole.data(), static_cast<gssize>(whole.size()),
                                   nullptr) &&
      g_markup_parse_context_end_parse(context.get(), nullptr);
  return well_formed ? out : std::string();
}

} // namespace

Glib::ustring escape_markup(const Glib::ustring& text)
{
  const Glib::ustring valid = text.make_valid();
  return escaped(valid.data(), valid.bytes());
}

std::string unescape_markup(const std::string& text)
{
  constexpr std::size_t longest_escape = 6; // "&quot;"
  std::string plain;
  std::size_t done = 0;
  for (auto at = text.find('&'); at != std::string::npos; at = text.find('&', at + 1)) {
    const std::size_t end = std::string_view(text).substr(at, longest_escape).find(';');
    if (end == std::string::npos)
      continue;
    const std::string character = escaped_character(std::string_view(text).substr(at + 1, end - 1));
    if (character.empty())
      continue;
    plain.append(text, done, at - done).append(character);
    done = at + end + 1;
  }
  return plain.append(text, done);
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
  return text.validate() && pango_parse_markup(text.data(), static_cast<int>(text.bytes()), 0,
                                               nullptr, nullptr, nullptr, nullptr);
}

bool is_label_markup(const Glib::ustring& text)
{
  if (text.empty() || !text.validate())
    return text.empty();
  const std::string rest = without_links(text.raw());
  return !rest.empty() && is_markup(rest);
}

Glib::ustring readable_markup(const Glib::ustring& text)
{
  return is_label_markup(text) ? text : escape_markup(text);
}

Glib::ustring without_markup(const Glib::ustring& text)
{
  char* words = nullptr;
  const bool has_zero = text.raw().find('\0') != std::string::npos; // would end the text
  if (has_zero || !pango_parse_markup(text.data(), static_cast<int>(text.bytes()), 0, nullptr,
                                      &words, nullptr, nullptr))
    return text;
  return GMemory<char>(words).get();
}
