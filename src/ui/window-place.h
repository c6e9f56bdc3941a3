#pragma once

#include <gdk/gdk.h>

namespace Gtk {
class Window;
}

// Where a window is on the screen, how large it is, and whether it fills the screen,
// so that another window can take its place. It belongs to the window.
class WindowPlace
{
public:
  explicit WindowPlace(Gtk::Window& the_window);
  WindowPlace(const WindowPlace&) = delete;
  WindowPlace& operator=(const WindowPlace&) = delete;

  // Puts this window, which is not shown yet, where the other one is. Does nothing
  // if that one was never on the screen. A display that does not let programs place
  // their windows, such as Wayland's, ignores the position.
  void take_over(WindowPlace& other);

private:
  bool on_configured(GdkEventConfigure* event);
  // Keeps place and size, unless the window is hidden or fills the screen.
  void note();

  Gtk::Window& window;
  bool is_known = false;
  // In pixels, as of when it last did not fill the screen.
  int x = 0; // of the frame's corner, as the next
  int y = 0;
  int width = 0; // without the frame, as the next
  int height = 0;
};
