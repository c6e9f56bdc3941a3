#include "core/exception-report.h"
#include "core/launch.h"
#include "core/my-app.h"
#include "core/report-dialog.h"
#include "core/version.h"
#include "ui/survey-window.h"

#include <gtkmm/application.h>

#include <cstdio>
#include <exception>
#include <iostream>

namespace {

constexpr int status_not_registered = 7;

// Creates the application object and the first window. Returns the exit status when the last
// window is closed.
int run_program(const Glib::RefPtr<Gtk::Application>& app)
{
  try {
    MyApp my_app(app);
    SurveyWindow* const window = SurveyWindow::create(my_app);
    return app->run(*window);
  } catch (const Glib::Exception& e) {
    std::cerr << "Glib::Exception = " << e.what() << std::endl;
  } catch (const std::exception& e) {
    std::cerr << "std::exception = " << e.what() << std::endl;
  } catch (...) {
    std::cerr << "Unknown exception" << std::endl;
  }
  return 1;
}

} // namespace

int main(int argc, char** argv)
{
  setlinebuf(stdout);
  printf("\nMAVO-Survey version %s, built %s\n", BuildInfo::version_str, BuildInfo::date_str);
  init_gtk_stuff(argc, argv);
  take_debug_argument(argc, argv);

  const auto app = Gtk::Application::create(argc, argv, "org.mavo.offline-survey-entry",
                                            Gio::APPLICATION_NON_UNIQUE);
  if (!app->register_application()) {
    puts("Failed to register!");
    return status_not_registered;
  }
  install_report_dialog();
  install_exception_report();
  return run_program(app);
}
