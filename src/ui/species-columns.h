#pragma once

#include "data/abundance-choices.h"

#include <glibmm/ustring.h>
#include <gtkmm/treeiter.h>
#include <gtkmm/treemodelcolumn.h>
#include <gtkmm/treestore.h>

#include <vector>

class SurveyWindow;

// The contents of a row. Names are plain text; rarity determines their shade.
struct SpeciesRow {
  int id; // negative for a family
  const Glib::ustring& common;
  const Glib::ustring& scientific;
  const Glib::ustring& spanish;
  int abundance;
  bool in_view;
  int rarity;
};

// The columns of every species table. A species row has a col_id of 0 or more, a family row
// -1. The abundance is a copy of the survey's abundance, for display.
class SpeciesTreeColumns : public Gtk::TreeModelColumnRecord
{
public:
  explicit SpeciesTreeColumns(SurveyWindow* the_window);
  ~SpeciesTreeColumns() override;

  // Writes all columns of a row. Names are plain text; rarity determines their shade.
  void set(const Gtk::TreeRow& row, int id, const Glib::ustring& common,
           const Glib::ustring& scientific, const Glib::ustring& spanish, int abundance,
           bool in_view, int rarity);
  // Appends a row to a family, or to the top level if `family` is null, and writes all its
  // columns in the same step. With huge data, this takes half the time of one step for each
  // column.
  GtkTreeIter append(const Glib::RefPtr<Gtk::TreeStore>& store, GtkTreeIter* family,
                     const SpeciesRow& content) const;
  // Writes only the abundance columns. An abundance beyond the list appears as the last one of
  // the list; a negative one has no label.
  void set_abundance(const Gtk::TreeRow& row, int abundance);
  // Returns whether the row is a marked species, or a family that has one. Counts only species
  // inside the view if `in_view`, or else only species outside of it.
  bool has_mark(const Gtk::TreeIter& row, bool in_view) const;
  // Returns the ids of all such species of the store, by row.
  std::vector<int> marked_species(const Glib::RefPtr<Gtk::TreeStore>& store, bool in_view) const;

  Gtk::TreeModelColumn<int> col_id;
  Gtk::TreeModelColumn<Glib::ustring> col_common; // this and the next three: markup
  Gtk::TreeModelColumn<Glib::ustring> col_scientific;
  Gtk::TreeModelColumn<Glib::ustring> col_both;
  Gtk::TreeModelColumn<Glib::ustring> col_spanish;
  Gtk::TreeModelColumn<int> col_abundance;
  Gtk::TreeModelColumn<Glib::ustring> col_abundance_label;
  Gtk::TreeModelColumn<bool> col_in_view;

  const std::vector<AbundanceChoices::Choice>* choices = nullptr; // of the survey's type
  SurveyWindow* window;
  Glib::ustring no_label;

private:
  bool is_marked(GtkTreeModel* store, GtkTreeIter* species, bool in_view) const;
  // Calls `write_cells` with the columns and cells of a row and the final -1, as arguments of
  // the toolkit's functions with a variable number of arguments.
  template<typename Write>
  void write(const SpeciesRow& content, const Write& write_cells) const;

  // An abundance, limited to the list, with its label.
  struct ShownAbundance {
    int index;
    const Glib::ustring& label;
  };
  ShownAbundance shown_abundance(int id, int abundance) const;
};
