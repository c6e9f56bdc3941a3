#include "core/my-app.h"

#include "core/link-opener.h"
#include "core/report.h"
#include "core/url-handlers.h"

#include <gdkmm/pixbuf.h>
#include <gtkmm/application.h>
#include <gtkmm/image.h>
#include <pango/pangocairo.h>

#include <cstdio>
#include <utility>

const Glib::ustring MAGIC_SNORKEL_DEPTH = "Snorkel";
const Glib::ustring NO_LONGER_AVAILABLE = "No longer available";

std::vector<Glib::RefPtr<Gdk::Pixbuf>> MyApp::icon_list;

namespace {

void load_icons(std::vector<Glib::RefPtr<Gdk::Pixbuf>>& icons)
{
  for (const int size : {16, 32, 64, 128, 256}) {
    char path[128];
    snprintf(path, sizeof path, "resources/MAVO-logo-%d.png", size);
    icons.push_back(Gtk::Image(path).get_pixbuf()); // null if there is no such file
  }
}

} // namespace

MyApp::MyApp(Glib::RefPtr<Gtk::Application> the_app)
    : upload_url("http://" MAVO_WEB_HOST "/dataentry/upload-survey.php"),
      version_query_url("http://" MAVO_WEB_HOST "/offline-data-entry/?get-version="),
      data_entry_url("http://" MAVO_WEB_HOST "/dataentry"),
      app(std::move(the_app))
{
  pango_cairo_font_map_get_default(); // begins to look for fonts while the data are read
  if (read_data_files() != RET_SUCCESS)
    fatal("Failed to read data files; you may need to reinstall the app.  Sorry!");
  if (icon_list.empty())
    load_icons(icon_list);
  check_url_handlers();
  install_link_opener();
}

MyApp::~MyApp() = default;
