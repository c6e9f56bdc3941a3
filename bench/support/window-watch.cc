#include "support/window-watch.h"

#include <poll.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr auto patience = std::chrono::seconds(60);

// A window may disappear during a query; then it has no properties.
int ignore_error(Display*, XErrorEvent*)
{
  return 0;
}

} // namespace

WindowWatch::WindowWatch() : display(XOpenDisplay(nullptr))
{
  if (!display) {
    std::fprintf(stderr, "There is no display to watch: start bench/run.sh\n");
    std::exit(2);
  }
  XSetErrorHandler(ignore_error);
  root = DefaultRootWindow(display.get());
  client_list = XInternAtom(display.get(), "_NET_CLIENT_LIST", False);
  process = XInternAtom(display.get(), "_NET_WM_PID", False);
  XSelectInput(display.get(), root, PropertyChangeMask | SubstructureNotifyMask);
}

bool WindowWatch::wait_for_window(pid_t pid)
{
  return wait_until([&] {
    const auto windows = windows_of(pid);
    return std::any_of(windows.begin(), windows.end(),
                       [this](Window window) { return is_viewable(window); });
  });
}

bool WindowWatch::wait_until_gone(pid_t pid)
{
  return wait_until([&] { return windows_of(pid).empty(); });
}

// Checks the condition only after events of the display's server, so that the checks do not
// slow down the program that it waits for.
template<typename Holds>
bool WindowWatch::wait_until(const Holds& holds)
{
  const auto deadline = std::chrono::steady_clock::now() + patience;
  while (!holds()) {
    pollfd connection{ConnectionNumber(display.get()), POLLIN, 0};
    if (XPending(display.get()) == 0 &&
        poll(&connection, 1, static_cast<int>(std::chrono::milliseconds(patience).count())) <= 0)
      return false;
    XEvent event;
    while (XPending(display.get()) > 0)
      XNextEvent(display.get(), &event);
    if (std::chrono::steady_clock::now() > deadline)
      return false;
  }
  return true;
}

// Returns the windows that the window manager manages.
std::vector<Window> WindowWatch::windows_of(pid_t pid)
{
  std::vector<Window> found;
  for (const Window window : property(root, client_list)) {
    const auto owner = property(window, process);
    if (!owner.empty() && owner.front() == static_cast<unsigned long>(pid)) {
      XSelectInput(display.get(), window, StructureNotifyMask); // reports when it is mapped
      found.push_back(window);
    }
  }
  return found;
}

std::vector<unsigned long> WindowWatch::property(Window window, Atom name)
{
  Atom type = None;
  int format = 0;
  unsigned long count = 0;
  unsigned long left = 0;
  unsigned char* data = nullptr;
  constexpr long many = 1000;
  if (XGetWindowProperty(display.get(), window, name, 0, many, False, AnyPropertyType, &type,
                         &format, &count, &left, &data) != Success ||
      !data)
    return {};
  // Xlib returns each item of 32 bits as a long.
  const auto* const items = reinterpret_cast<const unsigned long*>(data);
  std::vector<unsigned long> values(items, items + (format == 32 ? count : 0));
  XFree(data);
  return values;
}

bool WindowWatch::is_viewable(Window window)
{
  XWindowAttributes attributes{};
  return XGetWindowAttributes(display.get(), window, &attributes) != 0 &&
         attributes.map_state == IsViewable;
}
