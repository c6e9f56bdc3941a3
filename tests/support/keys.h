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

// Queues an event for a window that its keyboard grab has ended without another one. The toolkit
// sends such events late for an earlier grab.
void report_end_of_grab(const Glib::RefPtr<Gdk::Window>& window);

// Sends the window an event that it has lost or got the focus, as the display does when a menu
// grabs and releases the keyboard.
void move_keyboard(Gtk::Window& window, bool to_window);
