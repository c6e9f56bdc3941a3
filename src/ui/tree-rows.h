#pragma once

#include <gtkmm/treepath.h>

namespace Gtk {
class TreeView;
}

// These functions handle clicks and keys on the rows of all trees of the program.

// Returns the row that was clicked and sets the cursor there, in `cursor_column`. Returns an
// empty path if no row was clicked. For a click in another window of the tree, such as a
// column heading, prints a complaint with `tree_name`.
Gtk::TreePath clicked_row_path(Gtk::TreeView& tree, const GdkEventButton* event,
                               const char* tree_name, int cursor_column);
// Returns the cursor's row if the key acts on rows (Return or Right), else an empty path.
Gtk::TreePath key_row_path(Gtk::TreeView& tree, const GdkEventKey* event);
// Returns the cursor's row, or an empty path if there is none.
Gtk::TreePath cursor_path(Gtk::TreeView& tree);
// Returns the letter or digit that a key types; 0 for any other key, or with Ctrl, Alt or Super.
gunichar typed_character(const GdkEventKey* event);
// Returns whether the current event is a key or a change of the focus. Then a movement of the
// cursor is not the effect of a click.
bool comes_from_keyboard();

// Expands a collapsed row, or collapses an expanded one.
void toggle_row(Gtk::TreeView& tree, const Gtk::TreePath& path);
