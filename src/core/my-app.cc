#include "core/my-app.h"

#include "core/late-keys.h"
#include "core/link-opener.h"
#include "core/report.h"
#include "core/url-handlers.h"
#include "data/reference-data.h"

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
  pango_cairo_font_map_get_default(); // starts the search for fonts, parallel to the reading
  if (read_data_files() != RET_SUCCESS)
    fatal("Failed to read data files; you may need to reinstall the app.  Sorry!");
  if (icon_list.empty())
    load_icons(icon_list);
  check_url_handlers();
  install_link_opener();
  forward_late_keys();
}

MyApp::~MyApp() = default;

ReferenceData MyApp::reference_data() const
{
  return {data_file_info, data_defs,     data_params,      region_info,
          habitat_info,   species_views, abundance_choices};
}

RetCode MyApp::read_data_files()
{
  ReferenceData data = reference_data();
  const RetCode result = read_newest_data_set(local_data_dir, data);
  data_file_info = data.data_file_info;
  data_defs = data.data_defs;
  data_params = data.data_params;
  region_info = data.region_info;
  habitat_info = data.habitat_info;
  species_views = data.species_views;
  abundance_choices = data.abundance_choices;
  return result;
}

std::string MyApp::get_local_data_dir()
{
  return prepare_local_data_dir(local_data_dir);
}

std::string MyApp::get_survey_dir(WhichDir which)
{
  return survey_directory(survey_root, which);
}

void MyApp::visit_surveys(WhichDir which, const std::function<void(const std::string&)>& visit)
{
  visit_survey_files(get_survey_dir(which), visit);
}

std::vector<std::string> MyApp::get_ready_survey_list()
{
  return list_survey_files(get_survey_dir(WD_READY_TO_UPLOAD));
}

std::string MyApp::prettify_survey_list(const std::vector<std::string>& list,
                                        const std::string& current)
{
  return describe_survey_files(list, current, *region_info, *data_defs);
}

std::string MyApp::get_survey_description(const std::string& path, int* member_id)
{
  return describe_survey_file(path, *region_info, *data_defs, member_id);
}

RetCode MyApp::move_survey_to(WhichDir which, std::string& path)
{
  return move_survey_file(path, survey_root, which);
}
