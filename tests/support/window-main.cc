#include "core/exception-report.h"
#include "core/report-dialog.h"
#include "support/application.h"

#include <gdk/gdk.h>
#include <glibmm/timer.h>
#include <gtest/gtest.h>
#include <gtkmm/application.h>

#include <cstdio>

namespace {

Glib::RefPtr<Gtk::Application> registered_application;

bool has_window_manager()
{
  GdkWindow* const root = gdk_screen_get_root_window(gdk_screen_get_default());
  return gdk_property_get(root, gdk_atom_intern("_NET_SUPPORTING_WM_CHECK", FALSE), GDK_NONE, 0, 1,
                          FALSE, nullptr, nullptr, nullptr, nullptr);
}

// Waits for the window manager, which starts at the same time as the tests. A window that
// appears before it would not get the focus.
bool wait_for_window_manager()
{
  constexpr int pause = 10'000; // microseconds
  constexpr int tries = 3000;
  for (int i = 0; i < tries; ++i) {
    if (has_window_manager())
      return true;
    Glib::usleep(pause);
  }
  std::fputs("There is no window manager.\n", stderr);
  return false;
}

} // namespace

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
  install_report_dialog();
  install_exception_report();
  if (!wait_for_window_manager())
    return 1;
  return RUN_ALL_TESTS();
}
