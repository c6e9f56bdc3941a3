#pragma once

#include <glibmm/ustring.h>
#include <gtkmm/cellrenderertext.h>
#include <gtkmm/treeiter.h>
#include <gtkmm/treemodel.h>
#include <gtkmm/treeview.h>
#include <gtkmm/treeviewcolumn.h>

#include <functional>

class SurveyWindow;
class SpeciesTreeColumns;

// What the species trees of three panels share: cells, columns by the names
// that the diver wants to see, and the rules of a click or key on a row.

// Which row a click fell on: sets the cursor there and returns its path, or
// returns an empty path if the click is not for rows. `stray_format` is the
// trace line, with two pointers, for a click in another of the tree's windows.
Gtk::TreePath clicked_species_path(Gtk::TreeView& tree, const GdkEventButton* event,
                                   const char* stray_format);
// The cursor's row if the key acts on rows (Return or Right); else empty.
Gtk::TreePath key_species_path(Gtk::TreeView& tree, const GdkEventKey* event);
// The cursor's row; empty if there is none.
Gtk::TreePath cursor_path(Gtk::TreeView& tree);

// Folds or unfolds one row.
void toggle_row(Gtk::TreeView& tree, const Gtk::TreePath& path);

// What a click or key on a row does: button 1 folds a family, any way opens a
// species' abundance menu. Returns whether there was such a row.
bool trigger_species_line(SurveyWindow& window, Gtk::TreeView& tree,
                          const Glib::RefPtr<Gtk::TreeModel>& model, const Gtk::TreePath& path,
                          int button, guint32 time);

// Fills a cell of the "ID" column.
void render_id_cell(const SpeciesTreeColumns& columns, Gtk::CellRenderer* cell,
                    const Gtk::TreeIter& iter);

// The names that the tables show.
struct NameDisplay {
  bool common = false;
  bool scientific = false;
  bool spanish = false;
};

// The two columns of a tree that outlive a change of columns.
struct SpeciesTreeParts {
  Gtk::TreeViewColumn id_column;
  Gtk::CellRendererText id_cell;
  Gtk::TreeViewColumn name_column;
  Gtk::CellRendererText name_cell;
};

// Packs the cells into their columns, once.
void prepare_species_tree(SpeciesTreeParts& parts,
                          const Gtk::TreeViewColumn::SlotCellData& id_cell);

// Gives the tree its columns anew.
void set_species_tree_columns(Gtk::TreeView& tree, SpeciesTreeParts& parts,
                              const SpeciesTreeColumns& columns, const NameDisplay& names,
                              const Glib::ustring& abundance_title);
