#pragma once

#include <gtkmm/treepath.h>

namespace Gtk {
class TreeView;
}

// What clicks and keys on the rows of a tree mean, in all trees of the program.

// The row that a click fell on, with the cursor set there in the given column;
// empty if the click is not for rows. `tree_name` names the tree in the
// complaint about a click in another of its windows, such as a column heading.
Gtk::TreePath clicked_row_path(Gtk::TreeView& tree, const GdkEventButton* event,
                               const char* tree_name, int cursor_column);
// The cursor's row if the key acts on rows (Return or Right); else empty.
Gtk::TreePath key_row_path(Gtk::TreeView& tree, const GdkEventKey* event);
// The cursor's row; empty if there is none.
Gtk::TreePath cursor_path(Gtk::TreeView& tree);
// The letter or digit that a key types; 0 for any other key, and with Ctrl or Alt held.
gunichar typed_character(const GdkEventKey* event);
// Whether what is being handled comes from the keyboard or from its moving to another
// widget, so that a cursor that moves was not clicked.
bool comes_from_keyboard();

// Folds or unfolds one row.
void toggle_row(Gtk::TreeView& tree, const Gtk::TreePath& path);
