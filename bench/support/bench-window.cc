#include "support/bench-window.h"

#include "core/my-app.h"
#include "core/report-dialog.h"
#include "support/temporary-directory.h"
#include "ui/survey-window.h"

#include <gdk/gdk.h>
#include <glibmm/main.h>
#include <gtkmm/application.h>

#include <cstdlib>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

Glib::RefPtr<Gtk::Application> registered_application()
{
  static const auto application = [] {
    auto created =
        Gtk::Application::create("org.mavo.offline-survey-entry", Gio::APPLICATION_NON_UNIQUE);
    if (!created->register_application())
      std::exit(2);
    install_report_dialog();
    return created;
  }();
  return application;
}

} // namespace

MyApp& bench_program(const BenchData& data, const std::string& store)
{
  static const TemporaryDirectory scratch;
  static int count = 0;
  const fs::path directory = fs::path(scratch.path) / std::to_string(++count);
  fs::create_directory(directory);
  fs::create_directory_symlink(MAVO_RESOURCES, directory / "resources");
  fs::create_directory_symlink(data.directory, directory / "data-files");
  fs::current_path(directory); // the program looks there for both

  auto* const program = new MyApp(registered_application());
  program->survey_root = store.empty() ? (directory / "store").string() : store;
  return *program;
}

SurveyWindow& bench_window(MyApp& program)
{
  SurveyWindow* const window = SurveyWindow::create(program);
  program.app->add_window(*window);
  window->show();
  settle_windows();
  return *window;
}

void settle_windows()
{
  gdk_display_sync(gdk_display_get_default());
  while (Glib::MainContext::get_default()->iteration(false)) {
  }
}
