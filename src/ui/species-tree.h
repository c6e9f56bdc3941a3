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

// The parts that the species trees of three panels share: cells, columns for the names that
// the diver selects, and the effects of clicks and keys on rows.

// Prints the details of a click at trace level 10.
void trace_species_click(const GdkEventButton* event);

// Returns the row of a species tree that was clicked; see clicked_row_path().
Gtk::TreePath clicked_species_path(Gtk::TreeView& tree, const GdkEventButton* event,
                                   const char* tree_name);

// Reacts to a click or key on a row. Button 1 expands or collapses a family. Any button or key
// opens the abundance menu of a species unless the survey is read-only. Returns whether the
// row exists. REQUIRES: `model` is the tree's model, and `path` belongs to it.
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

// The parts of a tree that survive a change of its columns.
struct SpeciesTreeParts {
  Gtk::TreeViewColumn id_column;
  Gtk::CellRendererText id_cell;
  Gtk::TreeViewColumn name_column;
  Gtk::CellRendererText name_cell;
  NameFinder name_finder;
};

// Packs the cells into their columns and attaches the search by typing. `render_id` fills the
// ID cell. `open_found_row` is the action of Return on a row that was found by typing. Call it
// once for each tree.
void prepare_species_tree(Gtk::TreeView& tree, SpeciesTreeParts& parts,
                          const Gtk::TreeViewColumn::SlotCellData& render_id,
                          const NameFinder::OpenRow& open_found_row);

// Replaces the tree's columns by the ID, the names that `names` selects, and the abundance.
// The search by typing then finds these names.
void set_species_tree_columns(Gtk::TreeView& tree, SpeciesTreeParts& parts,
                              const SpeciesTreeColumns& columns, const NameDisplay& names,
                              const Glib::ustring& abundance_title);
