#include "ui/window-place.h"

#include <gtkmm/window.h>

namespace {

Gdk::WindowState state_of(const Gtk::Window& window)
{
  const auto surface = window.get_window();
  return surface ? surface->get_state() : Gdk::WindowState(0);
}

} // namespace

WindowPlace::WindowPlace(Gtk::Window& the_window) : window(the_window)
{
  window.signal_configure_event().connect(sigc::mem_fun(*this, &WindowPlace::on_configured), false);
}

// Stores each size, because the toolkit does not report the size that a window had before it was
// maximised or full-screen.
bool WindowPlace::on_configured(GdkEventConfigure*)
{
  note();
  return false;
}

void WindowPlace::note()
{
  const auto filling = Gdk::WINDOW_STATE_MAXIMIZED | Gdk::WINDOW_STATE_FULLSCREEN;
  if (!window.get_visible() || (state_of(window) & filling))
    return;
  is_known = true;
  window.get_position(x, y);
  window.get_size(width, height);
}

void WindowPlace::take_over(WindowPlace& other)
{
  other.note();
  if (other.is_known) {
    window.move(other.x, other.y);
    window.resize(other.width, other.height);
  }
  const auto state = state_of(other.window);
  if (state & Gdk::WINDOW_STATE_MAXIMIZED)
    window.maximize();
  if (state & Gdk::WINDOW_STATE_FULLSCREEN)
    window.fullscreen();
}
