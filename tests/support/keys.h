#pragma once

#include <glibmm/ustring.h>
#include <gtkmm/window.h>

#include <vector>

// Presses and releases a key of GDK_KEY_*, with these modifiers held, as if the window had
// the keyboard: what opens meanwhile, such as a menu, gets it as on a real keyboard.
void press_key(Gtk::Window& window, unsigned int keyval, unsigned int modifiers = 0);

// The same for keys that follow each other at once: nothing is laid out or drawn between them.
void press_keys_at_once(Gtk::Window& window, const std::vector<unsigned int>& keyvals);

// The same in a window of the display that need not be on the screen any more: the program
// gets it from the display's queue.
void press_key_in_queue(const Glib::RefPtr<Gdk::Window>& window, unsigned int keyval);

// Types ASCII text, key by key.
void type_text(Gtk::Window& window, const char* text);

// Tells a window, once the program looks at the display's queue, that its grab of the keyboard
// has ended without another one, as the toolkit does it late for a grab of the past.
void report_end_of_grab(const Glib::RefPtr<Gdk::Window>& window);

// Tells the window that it has lost the keyboard, or has it again, as the display does it when
// a menu takes the keyboard and gives it back.
void move_keyboard(Gtk::Window& window, bool to_window);
