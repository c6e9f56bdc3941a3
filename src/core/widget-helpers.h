#pragma once

namespace Gtk {
class Label;
class Widget;
} // namespace Gtk

// Returns a new empty label that fills a cell of a layout. The container owns it.
Gtk::Label* make_filler();

// Shows or hides the widget, which must not be null.
void show_or_hide(Gtk::Widget* widget, bool show);

// Allows a label that wraps to break words at any letter. Draws no hyphen there, because it
// would look like part of a name or path.
void break_anywhere(Gtk::Label& label);
