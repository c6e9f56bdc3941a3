#include "core/my-app.h"

#include "core/report.h"

#include <gdkmm/pixbuf.h>
#include <giomm/appinfo.h>
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

Glib::RefPtr<Gio::AppInfo> create_open_command()
{
  try {
    return Gio::AppInfo::create_from_commandline("open", "open hack",
                                                 Gio::APP_INFO_CREATE_SUPPORTS_URIS);
  } catch (const Glib::Error&) {
    return {};
  }
}

bool set_as_default(Gio::AppInfo& handler, const std::string& type)
{
  try {
    return handler.set_as_default_for_type(type);
  } catch (const Glib::Error&) {
    return false;
  }
}

// Links in labels and dialogs need a program that opens them. Where the system
// has none, its "open" command is tried.
void check_uri_handler(const std::string& scheme)
{
  if (const auto handler = Gio::AppInfo::get_default_for_uri_scheme(scheme)) {
    if (debug_level >= 2) {
      printf("default app for %s is %s (%s): %s\n", scheme.c_str(),
             handler->get_display_name().c_str(), handler->get_description().c_str(),
             handler->get_executable().c_str());
    }
    return;
  }
  if (debug_level >= 0)
    printf("No default app for %s!\n", scheme.c_str());
  const auto open_command = create_open_command();
  if (!open_command)
    printf("Failed to create AppInfo to handle %s\n", scheme.c_str());
  else if (!set_as_default(*open_command.operator->(), "x-scheme-handler/" + scheme))
    printf("Failed to set up handler for %s\n", scheme.c_str());
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
  for (const char* scheme : {"http", "https", "mailto"})
    check_uri_handler(scheme);
}

MyApp::~MyApp() = default;
