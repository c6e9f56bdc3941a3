#include "core/blocking-call.h"

#include <gtk/gtk.h>

namespace {

bool is_input(const GdkEvent& event)
{
  switch (event.type) {
  case GDK_KEY_PRESS:
  case GDK_KEY_RELEASE:
  case GDK_BUTTON_PRESS:
  case GDK_2BUTTON_PRESS:
  case GDK_3BUTTON_PRESS:
  case GDK_BUTTON_RELEASE:
  case GDK_SCROLL:
  case GDK_TOUCH_BEGIN:
  case GDK_TOUCH_UPDATE:
  case GDK_TOUCH_END:
  case GDK_TOUCH_CANCEL:
    return true;
  default:
    return false;
  }
}

struct EventFree {
  void operator()(GdkEvent* event) const { gdk_event_free(event); }
};

void discard_input(GdkDisplay& display)
{
  gdk_display_sync(&display); // puts all events so far into the queue
  std::vector<std::unique_ptr<GdkEvent, EventFree>> others;
  while (GdkEvent* const event = gdk_display_get_event(&display)) {
    std::unique_ptr<GdkEvent, EventFree> owner(event);
    if (!is_input(*event))
      others.push_back(std::move(owner));
  }
  for (const auto& event : others)
    gdk_display_put_event(&display, event.get());
}

// Draws the window at once. An X server without backing store shows a hidden dialog until
// the window below it is drawn again.
void draw_now(GdkWindow& window)
{
  gdk_window_invalidate_rect(&window, nullptr, TRUE);
  G_GNUC_BEGIN_IGNORE_DEPRECATIONS // newer functions wait for the main loop
      gdk_window_process_updates(&window, TRUE);
  G_GNUC_END_IGNORE_DEPRECATIONS
}

} // namespace

BlockingCall::BlockingCall() : display(gdk_display_get_default())
{
  if (!display)
    return;
  gdk_display_sync(display);
  const Reference<GdkCursor> busy(gdk_cursor_new_from_name(display, "wait"));
  GList* const toplevels = gtk_window_list_toplevels();
  for (const GList* item = toplevels; item; item = item->next) {
    auto* const widget = static_cast<GtkWidget*>(item->data);
    GdkWindow* const window = gtk_widget_get_window(widget);
    if (!window || !gtk_widget_get_visible(widget))
      continue;
    GdkCursor* const cursor = gdk_window_get_cursor(window);
    windows.push_back({Reference<GdkWindow>(GDK_WINDOW(g_object_ref(window))),
                       Reference<GdkCursor>(cursor ? GDK_CURSOR(g_object_ref(cursor)) : nullptr)});
    gdk_window_set_cursor(window, busy.get());
    draw_now(*window);
  }
  g_list_free(toplevels);
  gdk_display_sync(display);
}

BlockingCall::~BlockingCall()
{
  if (!display)
    return;
  for (const auto& shown : windows)
    gdk_window_set_cursor(shown.window.get(), shown.cursor.get());
  discard_input(*display);
}
