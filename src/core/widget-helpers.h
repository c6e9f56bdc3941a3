#pragma once

namespace Gtk {
class Label;
class Widget;
class Window;
} // namespace Gtk

// A width and a height in pixels.
struct Size {
  int width;
  int height;
};

// Returns the largest size that a dialog can have without its frame: the work area of a monitor
// minus the size of a frame. It is the monitor that shows `parent`, or the first monitor if
// `parent` is null or not realized. REQUIRES: there is a display.
Size room_on_screen(Gtk::Window* parent);

// Returns a new empty label that fills a cell of a layout. The container to which the caller
// adds the label owns it.
Gtk::Label* make_filler();

// Shows or hides the widget, which must not be null.
void show_or_hide(Gtk::Widget* widget, bool show);

// Allows a label that wraps to break words at any letter. Draws no hyphen there, because it
// would look like part of a name or path.
void break_anywhere(Gtk::Label& label);
