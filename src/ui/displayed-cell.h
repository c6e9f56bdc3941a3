#pragma once

#include <gtkmm/cellrenderertext.h>
#include <gtkmm/treeviewcolumn.h>

// Makes the cell of `column` show its text or markup within the limits of displayed-text.h:
// in one line, without its own sizes, and truncated. The model retains the complete text. This
// sets a data function of the cell. A data function that replaces it must call the function
// below.
void limit_displayed(Gtk::TreeViewColumn& column, Gtk::CellRendererText& cell);

// Limits the current text of the cell in the same way. Call it at the end of a data
// function.
void limit_displayed(Gtk::CellRendererText& cell);
