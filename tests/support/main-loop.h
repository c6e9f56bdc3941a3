#pragma once

#include <functional>

namespace Gtk {
class Widget;
}

// Lets the toolkit handle all that is waiting, such as drawing and idle work.
void settle();

// Runs the main loop until `holds` is true, for what others have to do first,
// such as the window manager. Fails the test if that takes longer than a busy
// machine needs.
void wait_until(const char* what, const std::function<bool()>& holds);

// Lets a widget on the screen be laid out and drawn: what a tree is told to scroll to
// may wait for that.
void let_draw(Gtk::Widget& widget);
