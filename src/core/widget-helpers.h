#pragma once

namespace Gtk {
class Label;
class Widget;
} // namespace Gtk

// A new empty label that fills a cell of a layout. Its container will own it.
Gtk::Label* make_filler();

void show_or_hide(Gtk::Widget* widget, bool show);

// Lets a label that wraps break words at any letter. No hyphen is drawn there: it would look
// like a part of a name or path.
void break_anywhere(Gtk::Label& label);
