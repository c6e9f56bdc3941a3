#include "support/keys.h"

#include "core/c-resource.h"
#include "support/main-loop.h"

#include <gtk/gtk.h>

#include <memory>

namespace {

struct EventFree {
  void operator()(GdkEvent* event) const { gdk_event_free(event); }
};

using Event = std::unique_ptr<GdkEvent, EventFree>;

Event key_event(GdkWindow* window, GdkEventType type, guint keyval, guint modifiers)
{
  GdkDisplay* const display = gdk_window_get_display(window);
  Event event(gdk_event_new(type));
  event->key.window = GDK_WINDOW(g_object_ref(window));
  event->key.send_event = FALSE;
  event->key.time = GDK_CURRENT_TIME;
  event->key.state = modifiers;
  event->key.keyval = keyval;
  GdkKeymapKey* keys = nullptr;
  gint count = 0;
  if (gdk_keymap_get_entries_for_keyval(gdk_keymap_get_for_display(display), keyval, &keys,
                                        &count)) {
    const GMemory<GdkKeymapKey> owner(keys);
    event->key.hardware_keycode = static_cast<guint16>(keys->keycode);
    event->key.group = static_cast<guint8>(keys->group);
    if (keys->level == 1)
      event->key.state |= GDK_SHIFT_MASK;
  }
  gdk_event_set_device(event.get(), gdk_seat_get_keyboard(gdk_display_get_default_seat(display)));
  return event;
}

void send(GdkWindow* window, GdkEventType type, guint keyval, guint modifiers)
{
  gtk_main_do_event(key_event(window, type, keyval, modifiers).get());
}

} // namespace

void press_key(Gtk::Window& window, unsigned int keyval, unsigned int modifiers)
{
  const auto surface = window.get_window(); // kept because the key may close the window
  send(surface->gobj(), GDK_KEY_PRESS, keyval, modifiers);
  send(surface->gobj(), GDK_KEY_RELEASE, keyval, modifiers);
  settle();
}

void press_keys_at_once(Gtk::Window& window, const std::vector<unsigned int>& keyvals)
{
  const auto surface = window.get_window();
  for (const auto keyval : keyvals) {
    send(surface->gobj(), GDK_KEY_PRESS, keyval, 0);
    send(surface->gobj(), GDK_KEY_RELEASE, keyval, 0);
  }
  settle();
}

void press_key_in_queue(const Glib::RefPtr<Gdk::Window>& window, unsigned int keyval)
{
  for (const auto type : {GDK_KEY_PRESS, GDK_KEY_RELEASE})
    gdk_display_put_event(gdk_window_get_display(window->gobj()),
                          key_event(window->gobj(), type, keyval, 0).get());
  settle();
}

void report_end_of_grab(const Glib::RefPtr<Gdk::Window>& window)
{
  GdkDisplay* const display = gdk_window_get_display(window->gobj());
  const Event event(gdk_event_new(GDK_GRAB_BROKEN));
  event->grab_broken.window = GDK_WINDOW(g_object_ref(window->gobj()));
  event->grab_broken.keyboard = TRUE;
  gdk_event_set_device(event.get(), gdk_seat_get_keyboard(gdk_display_get_default_seat(display)));
  gdk_display_put_event(display, event.get());
  settle();
}

void move_keyboard(Gtk::Window& window, bool to_window)
{
  const Event event(gdk_event_new(GDK_FOCUS_CHANGE));
  event->focus_change.window = GDK_WINDOW(g_object_ref(window.get_window()->gobj()));
  event->focus_change.in = to_window;
  GdkDisplay* const display = gdk_window_get_display(event->focus_change.window);
  gdk_event_set_device(event.get(), gdk_seat_get_keyboard(gdk_display_get_default_seat(display)));
  gtk_main_do_event(event.get());
  settle();
}

void type_text(Gtk::Window& window, const char* text)
{
  for (; *text; ++text)
    press_key(window, gdk_unicode_to_keyval(static_cast<unsigned char>(*text)));
}
