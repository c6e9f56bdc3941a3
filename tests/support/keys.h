#pragma once

#include <glibmm/ustring.h>
#include <gtkmm/window.h>

// Presses and releases a key of GDK_KEY_*, with these modifiers held, as if the window had
// the keyboard: what opens meanwhile, such as a menu, gets it as on a real keyboard.
void press_key(Gtk::Window& window, unsigned int keyval, unsigned int modifiers = 0);

// Types ASCII text, key by key.
void type_text(Gtk::Window& window, const char* text);
