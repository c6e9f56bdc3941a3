#include "support/main-loop.h"

#include <gdk/gdk.h>
#include <glibmm/main.h>
#include <gtest/gtest.h>
#include <gtkmm/widget.h>

// Requests to the display cause events, for example when a menu grabs and releases the keyboard.
// They must arrive before they can be handled.
void settle()
{
  if (auto* display = gdk_display_get_default())
    gdk_display_sync(display);
  while (Glib::MainContext::get_default()->iteration(false)) {
  }
}

void wait_until(const char* what, const std::function<bool()>& holds)
{
  constexpr unsigned int deadline = 30; // seconds
  bool too_late = false;
  sigc::connection timeout = Glib::signal_timeout().connect_seconds(
      [&too_late] {
        too_late = true;
        return false;
      },
      deadline);
  while (!holds() && !too_late)
    Glib::MainContext::get_default()->iteration(true);
  timeout.disconnect();
  EXPECT_FALSE(too_late) << what;
}

void let_draw(Gtk::Widget& widget)
{
  int frames = 0;
  constexpr int enough = 3; // the first frame may have begun earlier
  widget.add_tick_callback(
      [&frames](const Glib::RefPtr<Gdk::FrameClock>&) { return ++frames < enough; });
  wait_until("frames are drawn", [&frames] { return frames == enough; });
  settle();
}
