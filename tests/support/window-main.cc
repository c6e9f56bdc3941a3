#include "core/exception-report.h"
#include "support/application.h"

#include <gtest/gtest.h>
#include <gtkmm/application.h>

namespace {
Glib::RefPtr<Gtk::Application> registered_application;
}

Glib::RefPtr<Gtk::Application> test_application()
{
  return registered_application;
}

int main(int argc, char** argv)
{
  testing::InitGoogleTest(&argc, argv);
  registered_application = Gtk::Application::create(argc, argv, "org.mavo.offline-survey-entry",
                                                    Gio::APPLICATION_NON_UNIQUE);
  if (!registered_application->register_application())
    return 7;
  install_exception_report();
  return RUN_ALL_TESTS();
}
