#include "support/keys.h"

#include "core/c-resource.h"
#include "support/main-loop.h"

#include <gtk/gtk.h>

#include <memory>

namespace {

struct EventFree {
  void operator()(GdkEvent* event) const { gdk_event_free(event); }
};

void send(GdkWindow* window, GdkEventType type, guint keyval, guint modifiers)
{
  GdkDisplay* const display = gdk_window_get_display(window);
  const std::unique_ptr<GdkEvent, EventFree> event(gdk_event_new(type));
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
  gtk_main_do_event(event.get());
}

} // namespace

void press_key(Gtk::Window& window, unsigned int keyval, unsigned int modifiers)
{
  const auto surface = window.get_window(); // also of a window that a key closes
  send(surface->gobj(), GDK_KEY_PRESS, keyval, modifiers);
  send(surface->gobj(), GDK_KEY_RELEASE, keyval, modifiers);
  settle();
}

void type_text(Gtk::Window& window, const char* text)
{
  for (; *text; ++text)
    press_key(window, gdk_unicode_to_keyval(static_cast<unsigned char>(*text)));
}
