#pragma once

#include <X11/Xlib.h>
#include <sys/types.h>

#include <memory>
#include <vector>

// Watches the windows of other programs appear and disappear, by the events of the display's
// server and the properties of the window manager.
class WindowWatch
{
public:
  // Ends this program if there is no display.
  WindowWatch();

  // Returns when a window of the process and all its parents are mapped; false if none appears.
  bool wait_for_window(pid_t pid);
  // Returns when the window manager no longer manages a window of the process; false if one
  // stays.
  bool wait_until_gone(pid_t pid);

private:
  template<typename Holds>
  bool wait_until(const Holds& holds);
  std::vector<Window> windows_of(pid_t pid);
  std::vector<unsigned long> property(Window window, Atom name);
  bool is_viewable(Window window);

  struct Close {
    void operator()(Display* open) const { XCloseDisplay(open); }
  };
  std::unique_ptr<Display, Close> display;
  Window root;
  Atom client_list;
  Atom process;
};
