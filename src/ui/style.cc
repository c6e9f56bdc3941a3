#include "ui/style.h"

#include <gdkmm/screen.h>
#include <gtkmm/cssprovider.h>
#include <gtkmm/label.h>
#include <gtkmm/stylecontext.h>
#include <gtkmm/window.h>
#include <pangomm/attrlist.h>

#include <cstdio>

namespace {

void mark_as_dark(Gtk::Window& window)
{
  const auto context = window.get_style_context();
  const bool is_dark = has_dark_theme(window);
  if (is_dark == context->has_class("dark"))
    return; // the change of the class below emits the signal again
  if (is_dark)
    context->add_class("dark");
  else
    context->remove_class("dark");
}

bool is_light_shade(const Pango::Attribute& shade)
{
  const PangoColor& colour = reinterpret_cast<const PangoAttrColor*>(shade.gobj())->color;
  return colour.blue > colour.red; // of rare_tag, not of rarest_tag
}

} // namespace

void load_style()
{
  static bool loaded = false;
  if (loaded)
    return;
  loaded = true;

  const char* const path = "resources/survey-ui.css";
  try {
    const auto provider = Gtk::CssProvider::create();
    provider->load_from_path(path);
    Gtk::StyleContext::add_provider_for_screen(Gdk::Screen::get_default(), provider,
                                               GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
  } catch (const Glib::Error& e) {
    printf("Failed to load %s: %s\n", path, e.what().c_str());
  }
}

bool has_dark_theme(const Gtk::Widget& widget)
{
  Gdk::RGBA ground;
  if (!widget.get_style_context()->lookup_color("theme_base_color", ground))
    return false;
  // The brightness of the colour as the eye sees it.
  return 0.30 * ground.get_red() + 0.59 * ground.get_green() + 0.11 * ground.get_blue() < 0.5;
}

void follow_theme(Gtk::Window& window)
{
  window.signal_style_updated().connect([&window] { mark_as_dark(window); });
  mark_as_dark(window);
}

void make_shades_readable(Gtk::Label& label)
{
  Pango::AttrList added;
  Pango::AttrList shown(label.get_label());
  auto range = shown.get_iter();
  do {
    const auto shade = range.get_attribute(Pango::ATTR_BACKGROUND);
    if (!shade.gobj())
      continue;
    int start = 0;
    int end = 0;
    range.get_range(start, end);
    const auto add = [&](Pango::Attribute attribute) {
      attribute.set_start_index(static_cast<unsigned int>(start));
      attribute.set_end_index(static_cast<unsigned int>(end));
      added.insert(attribute);
    };
    constexpr guint16 dark = 0x1111;
    add(Pango::Attribute::create_attr_foreground(dark, dark, dark));
    add(Pango::Attribute::create_attr_underline(is_light_shade(shade) ? Pango::UNDERLINE_SINGLE
                                                                      : Pango::UNDERLINE_DOUBLE));
  } while (range.next());
  label.set_attributes(added);
}
