#include "core/long-text.h"

#include "core/markup.h"

#include <glib.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <utility>

namespace {

// The bytes of a text that are omitted, from `start` to before `end`.
struct Gap {
  std::size_t start;
  std::size_t end;
};

constexpr std::size_t longest_character = 4; // bytes in UTF-8; the text may be invalid

bool is_inside_character(char byte)
{
  return (static_cast<unsigned char>(byte) & 0xc0U) == 0x80U;
}

// Returns the position at which the gap starts: after the last line feed in the second half of
// the first `most` bytes or, if there is none, after a complete character.
std::size_t end_of_beginning(const std::string& text, std::size_t most)
{
  const std::size_t feed = most == 0 ? std::string::npos : text.rfind('\n', most - 1);
  if (feed != std::string::npos && feed >= most / 2)
    return feed + 1;
  const std::size_t first = most - std::min<std::size_t>(most, longest_character - 1);
  std::size_t end = most;
  while (end > first && is_inside_character(text[end]))
    --end;
  return end;
}

// Returns the position at which the gap ends, by the same rule for the last `most` bytes.
std::size_t start_of_end(const std::string& text, std::size_t most)
{
  const std::size_t feed = text.find('\n', text.size() - most - 1);
  if (feed != std::string::npos && feed < text.size() - most / 2)
    return feed + 1;
  std::size_t start = text.size() - most;
  const std::size_t last = std::min(text.size(), start + longest_character - 1);
  while (start < last && is_inside_character(text[start]))
    ++start;
  return start;
}

// Returns an empty gap if the text is short enough.
Gap find_gap(const std::string& text, std::size_t most)
{
  if (text.size() <= most)
    return {text.size(), text.size()};
  return {end_of_beginning(text, most / 2), start_of_end(text, most / 2)};
}

// Returns the text that replaces the gap.
std::string notice(const std::string& text, const Gap& gap)
{
  const auto first = text.begin() + static_cast<std::ptrdiff_t>(gap.start);
  const auto last = text.begin() + static_cast<std::ptrdiff_t>(gap.end);
  const auto feeds = std::count(first, last, '\n');
  if (feeds == 0)
    return "\u2026";
  const auto lines = feeds + (last[-1] == '\n' ? 0 : 1);
  return std::string(gap.start > 0 && first[-1] != '\n' ? "\n" : "") + "\u2026 " +
         std::to_string(lines) + (lines == 1 ? " line" : " lines") + " left out \u2026\n";
}

struct ParseContextFree {
  void operator()(GMarkupParseContext* context) const { g_markup_parse_context_free(context); }
};

const char* const root = "markup";

// Calls the handlers for each tag and text of the markup.
void parse(const GMarkupParser& handlers, gpointer data, const std::string& text)
{
  const std::unique_ptr<GMarkupParseContext, ParseContextFree> context(
      g_markup_parse_context_new(&handlers, G_MARKUP_DEFAULT_FLAGS, data, nullptr));
  const std::string whole = std::string("<") + root + ">" + text + "</" + root + ">";
  g_markup_parse_context_parse(context.get(), whole.data(), static_cast<gssize>(whole.size()),
                               nullptr);
}

void append_text(GMarkupParseContext*, const char* text, gsize size, gpointer plain, GError**)
{
  static_cast<std::string*>(plain)->append(text, size);
}

// Returns the text that the markup shows.
std::string plain_text(const std::string& markup)
{
  constexpr GMarkupParser handlers = {nullptr, nullptr, append_text, nullptr, nullptr};
  std::string plain;
  parse(handlers, &plain, markup);
  return plain;
}

// Copies markup without the text of the gap.
struct GapWriter {
  GapWriter(const Gap& the_gap, std::string the_notice)
      : gap(the_gap), instead(std::move(the_notice))
  {
  }

  static void on_start(GMarkupParseContext*, const char* element, const char** attributes,
                       const char** values, gpointer data, GError**)
  {
    auto& out = static_cast<GapWriter*>(data)->out;
    if (std::strcmp(element, root) == 0)
      return;
    out += std::string("<") + element;
    for (; *attributes; ++attributes, ++values)
      out += std::string(" ") + *attributes + "=\"" + escape_markup(*values).raw() + "\"";
    out += ">";
  }
  static void on_end(GMarkupParseContext*, const char* element, gpointer data, GError**)
  {
    if (std::strcmp(element, root) != 0)
      static_cast<GapWriter*>(data)->out += std::string("</") + element + ">";
  }
  static void on_text(GMarkupParseContext*, const char* text, gsize size, gpointer data, GError**)
  {
    static_cast<GapWriter*>(data)->write(std::string(text, size));
  }

  void write(const std::string& text)
  {
    const std::size_t before = std::min(text.size(), gap.start - std::min(gap.start, position));
    const std::size_t behind = std::min(text.size(), gap.end - std::min(gap.end, position));
    out += escape_markup(text.substr(0, before)).raw();
    if (!noticed && position + text.size() > gap.start) {
      out += instead;
      noticed = true;
    }
    out += escape_markup(text.substr(std::max(before, behind))).raw();
    position += text.size();
  }

  const Gap gap;
  const std::string instead; // replaces the gap
  std::size_t position = 0;  // in the plain text
  bool noticed = false;
  std::string out;
};

} // namespace

std::string shorten_text(const std::string& text, std::size_t most)
{
  const Gap gap = find_gap(text, most);
  if (gap.start == gap.end)
    return text;
  return text.substr(0, gap.start) + notice(text, gap) + text.substr(gap.end);
}

Glib::ustring shorten_markup(const Glib::ustring& markup, std::size_t most)
{
  if (markup.bytes() <= most)
    return markup;
  const std::string plain = plain_text(markup.raw());
  const std::size_t most_written = most * 10; // an escape has up to six bytes
  if (plain.size() <= most && markup.bytes() <= most_written)
    return markup;
  const Gap gap = find_gap(plain, most);
  GapWriter writer(gap, notice(plain, gap));
  constexpr GMarkupParser handlers = {GapWriter::on_start, GapWriter::on_end, GapWriter::on_text,
                                      nullptr, nullptr};
  parse(handlers, &writer, markup.raw());
  if (writer.out.size() <= most_written)
    return writer.out;
  return escape_markup(shorten_text(plain, most));
}
