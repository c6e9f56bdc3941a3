#pragma once

#include <gtkmm/cellrenderertext.h>
#include <gtkmm/treeviewcolumn.h>

// Lets the cell of `column` show its text or markup as far as displayed-text.h allows:
// without sizes of its own, in one line, and cut behind what no column is wide enough
// for. The model keeps the whole. The cell then has a data function. Another one that is
// set in its place calls the function below.
void limit_displayed(Gtk::TreeViewColumn& column, Gtk::CellRendererText& cell);

// Limits the text that the cell holds now in the same way. To be called at the end of a
// data function.
void limit_displayed(Gtk::CellRendererText& cell);
