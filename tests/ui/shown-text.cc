#include "ui/shown-text.h"

#include "core/markup.h"
#include "support/main-loop.h"

#include <cairomm/context.h>
#include <cairomm/surface.h>
#include <gtkmm/bin.h>
#include <gtkmm/cellview.h>
#include <gtkmm/entry.h>
#include <gtkmm/label.h>
#include <pango/pango.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <map>
#include <memory>

namespace {

struct AttributesUnref {
  void operator()(PangoAttrList* list) const { pango_attr_list_unref(list); }
};
struct IteratorDestroy {
  void operator()(PangoAttrIterator* iterator) const { pango_attr_iterator_destroy(iterator); }
};
using Attributes = std::unique_ptr<PangoAttrList, AttributesUnref>;
using AttributeIterator = std::unique_ptr<PangoAttrIterator, IteratorDestroy>;

double luminance(const Gdk::RGBA& colour)
{
  const auto linear = [](double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.get_red()) + 0.7152 * linear(colour.get_green()) +
         0.0722 * linear(colour.get_blue());
}

Gdk::RGBA colour_of(const PangoAttribute* attribute)
{
  const PangoColor& colour = reinterpret_cast<const PangoAttrColor*>(attribute)->color;
  Gdk::RGBA answer;
  answer.set_rgba(colour.red / 65535.0, colour.green / 65535.0, colour.blue / 65535.0, 1);
  return answer;
}

bool is_bold(PangoAttrIterator* iterator)
{
  const auto* const weight = pango_attr_iterator_get(iterator, PANGO_ATTR_WEIGHT);
  return weight && reinterpret_cast<const PangoAttrInt*>(weight)->value >= PANGO_WEIGHT_BOLD;
}

// A copy of what a window paints on the screen.
class Picture
{
public:
  explicit Picture(Gtk::Widget& toplevel)
      : surface(Cairo::ImageSurface::create(Cairo::FORMAT_RGB24, toplevel.get_allocated_width(),
                                            toplevel.get_allocated_height()))
  {
    paint(toplevel);
    settle(); // lists lay out their columns after the first paint
    paint(toplevel);
  }

  // Returns the most frequent colour of an area.
  Gdk::RGBA ground(const Gdk::Rectangle& area) const
  {
    std::map<std::uint32_t, int> counts;
    for (int y = area.get_y(); y < area.get_y() + area.get_height(); ++y)
      for (int x = area.get_x(); x < area.get_x() + area.get_width(); ++x)
        ++counts[pixel(x, y)];
    const auto most =
        std::max_element(counts.begin(), counts.end(),
                         [](const auto& a, const auto& b) { return a.second < b.second; });
    Gdk::RGBA answer;
    const auto part = [&](unsigned int shift) { return ((most->first >> shift) & 0xff) / 255.0; };
    answer.set_rgba(part(16), part(8), part(0), 1);
    return answer;
  }

private:
  void paint(Gtk::Widget& toplevel)
  {
    bool is_painted = false;
    sigc::connection painting =
        toplevel.signal_draw().connect([&](const Cairo::RefPtr<Cairo::Context>& painted) {
          const auto copy = Cairo::Context::create(surface);
          copy->set_source(painted->get_target(), 0, 0);
          copy->paint();
          surface->flush();
          is_painted = true;
          return false;
        });
    toplevel.queue_draw();
    wait_until("the window is painted", [&] { return is_painted; });
    painting.disconnect();
  }

  std::uint32_t pixel(int x, int y) const
  {
    const std::ptrdiff_t row = y;
    const std::ptrdiff_t column = x;
    std::uint32_t value = 0;
    std::memcpy(&value, surface->get_data() + row * surface->get_stride() + 4 * column,
                sizeof value);
    return value & 0xffffff;
  }

  Cairo::RefPtr<Cairo::ImageSurface> surface;
};

// Returns the visible area of a widget; empty if it is not visible because of scrolling.
Gdk::Rectangle visible_area(Gtk::Widget& widget, Gtk::Widget& toplevel)
{
  Gdk::Rectangle area(0, 0, toplevel.get_allocated_width(), toplevel.get_allocated_height());
  for (Gtk::Widget* above = &widget; above != &toplevel; above = above->get_parent()) {
    int x = 0;
    int y = 0;
    above->translate_coordinates(toplevel, 0, 0, x, y);
    bool overlaps = false;
    area.intersect({x, y, above->get_allocated_width(), above->get_allocated_height()}, overlaps);
    if (!overlaps)
      return {};
  }
  return area;
}

// Returns the opacity of a widget including its parents.
double opacity_of(Gtk::Widget& widget)
{
  double opacity = 1;
  for (Gtk::Widget* above = &widget; above; above = above->get_parent()) {
    double own = 1;
    const auto context = above->get_style_context();
    gtk_style_context_get(context->gobj(), gtk_style_context_get_state(context->gobj()), "opacity",
                          &own, nullptr);
    opacity *= own * above->get_opacity();
  }
  return opacity;
}

Gdk::RGBA text_colour(Gtk::Widget& widget)
{
  const auto context = widget.get_style_context();
  Gdk::RGBA colour = context->get_color(context->get_state());
  colour.set_alpha(colour.get_alpha() * opacity_of(widget));
  return colour;
}

// Returns the colour of the text; a placeholder has another colour.
Gdk::RGBA text_colour(Gtk::Entry& entry)
{
  Gdk::RGBA colour;
  if (entry.get_text().empty() &&
      entry.get_style_context()->lookup_color("placeholder_text_color", colour))
    return colour;
  return text_colour(static_cast<Gtk::Widget&>(entry));
}

// Returns the markup that a widget shows; empty if it shows no text.
Glib::ustring markup_of(Gtk::Widget& widget)
{
  if (const auto* const label = dynamic_cast<Gtk::Label*>(&widget))
    return label->get_use_markup() ? label->get_label() : escape_markup(label->get_text());
  if (const auto* const entry = dynamic_cast<Gtk::Entry*>(&widget))
    return escape_markup(entry->get_text().empty() ? entry->get_placeholder_text()
                                                   : entry->get_text());
  return dynamic_cast<Gtk::CellView*>(&widget) ? "(chosen)" : "";
}

// Returns the colour in which a widget draws `text`. The attributes of a label override the colours
// of its markup. In this program, only words with their own background have such attributes, all
// with the same colour.
Gdk::RGBA colour_over(Gtk::Widget& widget, const ShownText& text)
{
  auto* const label = dynamic_cast<Gtk::Label*>(&widget);
  PangoAttrList* const added = label ? gtk_label_get_attributes(label->gobj()) : nullptr;
  if (!added || !text.has_own_ground)
    return text.colour;
  const AttributeIterator iterator(pango_attr_list_get_iterator(added));
  do {
    if (const auto* own = pango_attr_iterator_get(iterator.get(), PANGO_ATTR_FOREGROUND))
      return colour_of(own);
  } while (pango_attr_iterator_next(iterator.get()));
  return text.colour;
}

void add_texts(Gtk::Widget& widget, Gtk::Widget& toplevel, const Picture& picture,
               std::vector<ShownText>& texts)
{
  if (!widget.get_mapped())
    return;
  if (auto* const container = dynamic_cast<Gtk::Container*>(&widget))
    container->forall([&](Gtk::Widget& child) { add_texts(child, toplevel, picture, texts); });
  const Gdk::Rectangle area = visible_area(widget, toplevel);
  const Glib::ustring markup = markup_of(widget);
  if (markup.empty() || area.has_zero_area())
    return;
  auto* const entry = dynamic_cast<Gtk::Entry*>(&widget);
  const Gdk::RGBA colour = entry ? text_colour(*entry) : text_colour(widget);
  for (auto& text : texts_of_markup(markup, colour, picture.ground(area))) {
    text.colour = colour_over(widget, text);
    text.is_sensitive = widget.is_sensitive();
    text.is_value = entry || dynamic_cast<Gtk::CellView*>(&widget) ||
                    widget.get_style_context()->has_class("value");
    texts.push_back(text);
  }
}

} // namespace

double contrast(const Gdk::RGBA& one, const Gdk::RGBA& other)
{
  const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
  return (lighter + 0.05) / (darker + 0.05);
}

Gdk::RGBA blend(const Gdk::RGBA& top, const Gdk::RGBA& ground)
{
  const double alpha = top.get_alpha();
  const auto mix = [&](double above, double below) { return alpha * above + (1 - alpha) * below; };
  Gdk::RGBA answer;
  answer.set_rgba(mix(top.get_red(), ground.get_red()), mix(top.get_green(), ground.get_green()),
                  mix(top.get_blue(), ground.get_blue()), 1);
  return answer;
}

std::vector<ShownText> shown_texts(Gtk::Widget& toplevel)
{
  std::vector<ShownText> texts;
  add_texts(toplevel, toplevel, Picture(toplevel), texts);
  return texts;
}

std::vector<ShownText> texts_of_markup(const Glib::ustring& markup, const Gdk::RGBA& colour,
                                       const Gdk::RGBA& ground)
{
  PangoAttrList* parsed = nullptr;
  char* words = nullptr;
  if (!pango_parse_markup(markup.c_str(), -1, 0, &parsed, &words, nullptr, nullptr))
    return {{markup, blend(colour, ground), ground}}; // Pango rejects links
  const Attributes attributes(parsed);
  const std::string text = words;
  g_free(words);

  std::vector<ShownText> texts;
  const AttributeIterator iterator(pango_attr_list_get_iterator(attributes.get()));
  do {
    int start = 0;
    int end = 0;
    pango_attr_iterator_range(iterator.get(), &start, &end);
    if (static_cast<std::size_t>(start) >= text.size())
      break;
    const auto* const own = pango_attr_iterator_get(iterator.get(), PANGO_ATTR_FOREGROUND);
    const auto* const shade = pango_attr_iterator_get(iterator.get(), PANGO_ATTR_BACKGROUND);
    const auto length = static_cast<std::size_t>(std::max(0, end - start));
    const Gdk::RGBA below = shade ? colour_of(shade) : ground;
    texts.push_back({text.substr(static_cast<std::size_t>(start), length),
                     own ? colour_of(own) : blend(colour, below), below, is_bold(iterator.get()),
                     shade != nullptr});
  } while (pango_attr_iterator_next(iterator.get()));
  return texts;
}

ShownText styled_text(const Gtk::Widget& widget, Gtk::StateFlags state)
{
  const auto context = widget.get_style_context();
  context->context_save();
  context->set_state(state);
  ShownText text;
  text.colour = context->get_color(state);
  text.ground = context->get_background_color(state);
  context->context_restore();
  return text;
}
