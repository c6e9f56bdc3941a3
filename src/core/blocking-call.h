#pragma once

#include <gdk/gdk.h>

#include <memory>
#include <vector>

// While it lives, this thread waits for a server and no event is handled.
//
// The constructor puts on the screen what has been hidden so far, such as a dialog
// that was just answered, and shows the busy cursor in all windows. It does not run
// the main loop. The destructor restores the cursors and discards what was typed
// and clicked meanwhile: it must not answer the dialog that follows. All other
// events stay. Without a display nothing happens.
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
    Reference<GdkCursor> cursor; // null: that of the parent
  };

  GdkDisplay* const display; // null without one
  std::vector<Shown> windows;
};
