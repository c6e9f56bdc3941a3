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
  // Ends this process if there is no display.
  WindowWatch();

  // Waits until a window of the process and all its parents are mapped. Returns false if this
  // does not happen within about a minute.
  bool wait_for_window(pid_t pid);
  // Waits until the window manager manages no window of the process. Returns false if this does
  // not happen within about a minute.
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
