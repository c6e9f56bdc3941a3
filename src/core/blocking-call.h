#pragma once

#include <gdk/gdk.h>

#include <memory>
#include <vector>

// Marks the time in which this thread waits for a server and handles no event.
//
// The constructor updates the screen, so that a dialog that was just answered
// disappears, and shows the busy cursor in all windows. It does not run the main
// loop. The destructor restores the cursors. It discards keys and clicks that arrived
// in the meantime, because they must not answer the next dialog, and keeps all other
// events. Without a display, both do nothing.
class BlockingCall
{
public:
  BlockingCall();
  ~BlockingCall();
  BlockingCall(const BlockingCall&) = delete;
  BlockingCall& operator=(const BlockingCall&) = delete;

private:
  struct Unref {
    void operator()(void* object) const { g_object_unref(object); }
  };
  template<typename T>
  using Reference = std::unique_ptr<T, Unref>;
  struct Shown {
    Reference<GdkWindow> window;
    Reference<GdkCursor> cursor; // null if the window inherits its parent's cursor
  };

  GdkDisplay* const display; // null if there is no display
  std::vector<Shown> windows;
};
