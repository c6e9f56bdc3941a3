#pragma once

#include "ui/name-finder.h"
#include "ui/tree-rows.h"

#include <glibmm/ustring.h>
#include <gtkmm/cellrenderertext.h>
#include <gtkmm/treeiter.h>
#include <gtkmm/treemodel.h>
#include <gtkmm/treeview.h>
#include <gtkmm/treeviewcolumn.h>

class SurveyWindow;
class SpeciesTreeColumns;

// What the species trees of three panels share: cells, columns by the names
// that the diver wants to see, and the rules of a click or key on a row.

// Prints all that is known of a click, at debug level 10.
void trace_species_click(const GdkEventButton* event);

// The row of a species tree that a click fell on; see clicked_row_path().
Gtk::TreePath clicked_species_path(Gtk::TreeView& tree, const GdkEventButton* event,
                                   const char* tree_name);

// What a click or key on a row does: button 1 folds a family, any way opens a
// species' abundance menu unless the survey is read-only. `path` belongs to
// `model`, the tree's. Returns whether there was such a row.
bool trigger_species_line(SurveyWindow& window, Gtk::TreeView& tree,
                          const Glib::RefPtr<Gtk::TreeModel>& model, const Gtk::TreePath& path,
                          int button, guint32 time);

// Fills the "ID" cell for a row.
void render_id_cell(const SpeciesTreeColumns& columns, Gtk::CellRendererText& cell,
                    const Gtk::TreeIter& iter);

// The names that the tables show.
struct NameDisplay {
  bool common = false;
  bool scientific = false;
  bool spanish = false;
};

// What of a tree outlives a change of columns: two of them, and the search.
struct SpeciesTreeParts {
  Gtk::TreeViewColumn id_column;
  Gtk::CellRendererText id_cell;
  Gtk::TreeViewColumn name_column;
  Gtk::CellRendererText name_cell;
  NameFinder name_finder;
};

// Packs the cells into their columns, once, and lets typing in the tree find
// names. `render_id` fills the ID cell; `open_found_row` is what Return does with a row
// that was found by typing.
void prepare_species_tree(Gtk::TreeView& tree, SpeciesTreeParts& parts,
                          const Gtk::TreeViewColumn::SlotCellData& render_id,
                          const NameFinder::OpenRow& open_found_row);

// Gives the tree its columns anew.
void set_species_tree_columns(Gtk::TreeView& tree, SpeciesTreeParts& parts,
                              const SpeciesTreeColumns& columns, const NameDisplay& names,
                              const Glib::ustring& abundance_title);
