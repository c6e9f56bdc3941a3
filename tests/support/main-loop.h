#pragma once

#include <functional>

namespace Gtk {
class Widget;
}

// Lets the toolkit handle everything that is pending, such as drawing and idle work.
void settle();

// Runs the main loop until `holds` returns true. Use it to wait for other processes, such as the
// window manager. Fails the test with the message `what` if that takes longer than 30 seconds.
void wait_until(const char* what, const std::function<bool()>& holds);

// Waits until a widget has been laid out and drawn. A tree may delay scrolling until then.
// REQUIRES: the widget is visible.
void let_draw(Gtk::Widget& widget);
