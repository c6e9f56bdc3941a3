#pragma once

namespace Gtk {
class Label;
class Widget;
} // namespace Gtk

// A new empty label that fills a cell of a layout. Its container will own it.
Gtk::Label* make_filler();

void show_or_hide(Gtk::Widget* widget, bool show);
