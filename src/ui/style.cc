#include "ui/style.h"

#include <gdkmm/screen.h>
#include <gtkmm/cssprovider.h>
#include <gtkmm/stylecontext.h>

#include <cstdio>

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
