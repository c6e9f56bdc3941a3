#include "core/displayed-text.h"

#include "core/c-resource.h"
#include "core/markup.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <set>
#include <string_view>
#include <vector>

namespace {

constexpr const char* dots = "\u2026";
// The largest number of tags in the result. More tags would only take time.
constexpr std::size_t most_tags = 1000;
// Markup of more bytes is shown literally, because reading its tags takes too long.
constexpr std::size_t longest_markup = 200000;

// Attributes that change neither the size nor the position of the text.
const std::set<std::string_view> harmless_attributes = {"alpha",
                                                        "background",
                                                        "background_alpha",
                                                        "bgalpha",
                                                        "bgcolor",
                                                        "color",
                                                        "face",
                                                        "fgalpha",
                                                        "fgcolor",
                                                        "font_family",
                                                        "font_style",
                                                        "font_variant",
                                                        "font_weight",
                                                        "foreground",
                                                        "foreground_alpha",
                                                        "href",
                                                        "lang",
                                                        "strikethrough",
                                                        "strikethrough_color",
                                                        "style",
                                                        "title",
                                                        "underline",
                                                        "underline_color",
                                                        "variant",
                                                        "weight"};
const std::set<std::string_view> sizing_tags = {"big", "small", "sub", "sup"};

std::string escaped(const char* text, std::size_t size)
{
  return GMemory<char>(g_markup_escape_text(text, static_cast<gssize>(size))).get();
}

// Writes the displayed form of a markup. GLib's markup parser calls its members.
struct DisplayedMarkup {
  explicit DisplayedMarkup(std::size_t most) : room(most) {}

  std::size_t room; // characters that may still be written
  std::string markup;
  std::vector<bool> written_tags; // for each open tag, whether it has been written
  std::size_t tags = 0;
  bool is_cut = false;
  bool differs = false; // whether `markup` differs from the text that was parsed

  void start(const char* element, const char** names, const char** values)
  {
    if (std::strcmp(element, "markup") == 0) { // the root element, which labels add
      written_tags.push_back(false);
      return;
    }
    const bool written = !is_cut && ++tags <= most_tags;
    written_tags.push_back(written);
    differs = differs || !written;
    if (!written)
      return;
    const bool sizes = sizing_tags.count(element) > 0;
    differs = differs || sizes;
    markup += std::string("<") + (sizes ? "span" : element);
    for (; *names; ++names, ++values) {
      if (harmless_attributes.count(*names) > 0)
        markup += std::string(" ") + *names + "=\"" + escaped(*values, std::strlen(*values)) + "\"";
      else
        differs = true;
    }
    markup += ">";
  }

  void end(const char* element)
  {
    if (written_tags.back())
      markup += std::string("</") + (sizing_tags.count(element) > 0 ? "span" : element) + ">";
    written_tags.pop_back();
  }

  void text(const char* words, std::size_t size)
  {
    if (is_cut || size == 0)
      return;
    const auto length = static_cast<std::size_t>(g_utf8_strlen(words, static_cast<gssize>(size)));
    const bool fits = length <= room;
    const char* const stop =
        fits ? words + size : g_utf8_offset_to_pointer(words, static_cast<glong>(room));
    markup += escaped(words, static_cast<std::size_t>(stop - words));
    room -= std::min(room, length);
    if (!fits) {
      markup += dots;
      is_cut = true;
      differs = true;
    }
  }
};

void on_start(GMarkupParseContext*, const char* element, const char** names, const char** values,
              gpointer out, GError**)
{
  static_cast<DisplayedMarkup*>(out)->start(element, names, values);
}

void on_end(GMarkupParseContext*, const char* element, gpointer out, GError**)
{
  static_cast<DisplayedMarkup*>(out)->end(element);
}

void on_text(GMarkupParseContext*, const char* text, gsize size, gpointer out, GError**)
{
  static_cast<DisplayedMarkup*>(out)->text(text, size);
}

struct ParseContextFree {
  void operator()(GMarkupParseContext* context) const { g_markup_parse_context_free(context); }
};

bool parse(const std::string& text, DisplayedMarkup& displayed)
{
  constexpr GMarkupParser handlers = {on_start, on_end, on_text, nullptr, nullptr};
  const std::unique_ptr<GMarkupParseContext, ParseContextFree> context(
      g_markup_parse_context_new(&handlers, G_MARKUP_DEFAULT_FLAGS, &displayed, nullptr));
  const std::string whole = "<markup>" + text + "</markup>";
  return g_markup_parse_context_parse(context.get(), whole.data(),
                                      static_cast<gssize>(whole.size()), nullptr) &&
         g_markup_parse_context_end_parse(context.get(), nullptr);
}

} // namespace

Glib::ustring displayed_text(const Glib::ustring& text, std::size_t most)
{
  if (text.bytes() <= most) // no text has more characters than bytes
    return text;
  const Glib::ustring valid = text.make_valid();
  const char* stop = valid.c_str();
  for (std::size_t i = 0; i < most && *stop; ++i)
    stop = g_utf8_next_char(stop);
  return *stop ? std::string(valid.c_str(), stop) + dots : valid.raw();
}

Glib::ustring displayed_line(const Glib::ustring& text, std::size_t most)
{
  Glib::ustring cut = displayed_text(text, most);
  if (!cut.validate())
    return cut;
  Glib::ustring line;
  for (const gunichar c : cut)
    line += g_unichar_iscntrl(c) || c == 0x2028 || c == 0x2029 ? gunichar(' ') : c;
  return line;
}

Glib::ustring displayed_markup(const Glib::ustring& text, std::size_t most)
{
  if (text.bytes() > longest_markup || !is_label_markup(text))
    return escape_markup(displayed_text(text, most));
  DisplayedMarkup displayed(most);
  return parse(text.raw(), displayed) && displayed.differs ? Glib::ustring(displayed.markup) : text;
}
