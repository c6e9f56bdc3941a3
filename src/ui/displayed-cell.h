#pragma once

#include <gtkmm/cellrenderertext.h>
#include <gtkmm/treeviewcolumn.h>

// Lets the cell of `column` show its text or markup as far as displayed-text.h allows:
// without sizes of its own, in one line, and cut behind what no column is wide enough
// for. The model keeps the whole. The cell then has a data function, so none of its own
// can be set.
void limit_displayed(Gtk::TreeViewColumn& column, Gtk::CellRendererText& cell);
