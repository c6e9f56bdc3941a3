#pragma once

#include <gdk/gdk.h>

namespace Gtk {
class Window;
}

// The position, size and maximised or full-screen state of a window, so that another window
// can replace it. It is a member of the window.
class WindowPlace
{
public:
  // REQUIRES: `the_window` outlives this object.
  explicit WindowPlace(Gtk::Window& the_window);
  WindowPlace(const WindowPlace&) = delete;
  WindowPlace& operator=(const WindowPlace&) = delete;

  // Gives this window the place of the other one. Does nothing if the other one was never
  // visible. A display such as Wayland's, on which programs cannot place their windows, ignores
  // the position. REQUIRES: this window is not visible yet.
  void take_over(WindowPlace& other);

private:
  bool on_configured(GdkEventConfigure* event);
  // Stores position and size unless the window is hidden, maximised or full-screen.
  void note();

  Gtk::Window& window;
  bool is_known = false;
  // In pixels, as they were when the window was last neither maximised nor full-screen.
  int x = 0; // with the frame, like y
  int y = 0;
  int width = 0; // without the frame, like height
  int height = 0;
};
