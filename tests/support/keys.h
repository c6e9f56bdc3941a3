#pragma once

#include <glibmm/ustring.h>
#include <gtkmm/window.h>

#include <vector>

// Presses and releases a key of GDK_KEY_* with these modifiers, as if the window had the focus.
// A menu that is open gets the key, as with a real keyboard.
void press_key(Gtk::Window& window, unsigned int keyval, unsigned int modifiers = 0);

// Like press_key(), for keys in immediate succession, without layout and drawing between them.
void press_keys_at_once(Gtk::Window& window, const std::vector<unsigned int>& keyvals);

// Like press_key(), through the display's queue, for a window that may be hidden already.
void press_key_in_queue(const Glib::RefPtr<Gdk::Window>& window, unsigned int keyval);

// Types ASCII text, key by key.
void type_text(Gtk::Window& window, const char* text);

// Queues the event that reports to a window that its keyboard grab has ended and that no other
// window has grabbed the keyboard. The toolkit may send such an event late, for an earlier grab.
void report_end_of_grab(const Glib::RefPtr<Gdk::Window>& window);

// Sends a window the event that it has got the focus if `to_window`, or else that it has lost the
// focus. The display sends such events when a menu grabs and releases the keyboard.
void move_keyboard(Gtk::Window& window, bool to_window);
