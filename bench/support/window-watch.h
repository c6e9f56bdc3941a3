#pragma once

#include <X11/Xlib.h>
#include <sys/types.h>

#include <memory>
#include <vector>

// Sees the windows of other programs come and go, as the display's server and the
// window manager tell of them.
class WindowWatch
{
public:
  // Ends this program if there is no display.
  WindowWatch();

  // Returns once a window of the process is mapped, and so are all that it lies in;
  // false if none comes.
  bool wait_for_window(pid_t pid);
  // Returns once the window manager knows no window of the process any more; false
  // if it keeps one.
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
