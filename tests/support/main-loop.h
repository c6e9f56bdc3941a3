#pragma once

#include <functional>

namespace Gtk {
class Widget;
}

// Lets the toolkit handle everything that is pending, such as drawing and idle work.
void settle();

// Runs the main loop until `holds` returns true. Use it to wait for other processes, such as the
// window manager. Fails the test if that takes longer than on a busy machine.
void wait_until(const char* what, const std::function<bool()>& holds);

// Lets a visible widget be laid out and drawn. A tree may delay scrolling until then.
void let_draw(Gtk::Widget& widget);
