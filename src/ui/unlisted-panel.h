#pragma once

#include "ui/drop-down-box.h"
#include "ui/searched-species.h"
#include "ui/species-search.h"
#include "ui/species-tree.h"

#include <gtkmm/box.h>
#include <gtkmm/builder.h>
#include <gtkmm/entry.h>
#include <gtkmm/grid.h>
#include <gtkmm/label.h>
#include <gtkmm/treemodelfilter.h>
#include <gtkmm/treeselection.h>
#include <gtkmm/treeview.h>

#include <vector>

class MyApp;
class SurveyWindow;

// The Unlisted Species page, on which the user finds and marks species that the view lacks.
// Both of its trees filter the window's store of all species. One tree shows the marked
// species that the view lacks, and the other one shows the results of the search.
class UnlistedPanel : public Gtk::Grid
{
public:
  UnlistedPanel(BaseObjectType* cobject, const Glib::RefPtr<Gtk::Builder>& builder);
  // Connects the page to its window. Call it once, after the constructor.
  void ctor_continued(const Glib::RefPtr<Gtk::Builder>& builder, SurveyWindow* the_window);

  // Adapt the page to a new subregion or survey type.
  void setup_for_subregion(const Glib::ustring& subregion);
  void setup_for_survey_subtype();
  // Reads the search text and filters both trees.
  void run_search();
  // Filters both trees after a change of an abundance, with the same search.
  void refilter();
  // Like refilter(), only for the tree of marked species.
  void refilter_selected();
  // Shows the columns that the name buttons of the Listed Species page select.
  void update_columns();
  // Detach the trees from the store while it is filled, and attach them again. The trees then
  // show the results of the current search and the marks.
  void detach_models();
  void attach_models();

  // Return whether a tree shows the row of the store. The first function also adds the row to
  // num_selected. The second only reads the results of the search.
  bool check_visible_selected(const Gtk::TreeIter& iter);
  bool check_visible_found(const Gtk::TreeIter& iter) const;
  // Returns whether the current search finds the species in that row of searched_species.
  // REQUIRES: the search is not by family.
  bool is_species_found(std::size_t row);

  void on_search_changed();
  // Handlers of the two trees, like those of ListedPanel.
  bool on_selected_species_clicked(GdkEventButton* event);
  bool on_selected_species_kb_event(GdkEventKey* event);
  bool on_selected_species_kb_activated();
  bool do_selected_species_line_trigger(const Gtk::TreePath& path, int button, unsigned int time);
  void render_selected_species_id(Gtk::CellRenderer* cell, const Gtk::TreeIter& iter);
  bool on_found_species_clicked(GdkEventButton* event);
  bool on_found_species_kb_event(GdkEventKey* event);
  bool on_found_species_kb_activated();
  bool do_found_species_line_trigger(const Gtk::TreePath& path, int button, unsigned int time);
  void render_found_species_id(Gtk::CellRenderer* cell, const Gtk::TreeIter& iter);

  MyApp* my_app = nullptr;
  SurveyWindow* window = nullptr;
  int page = -1; // the index in the notebook
  Gtk::Label* unlisted_instructions = nullptr;
  Gtk::Box* selected_species_box = nullptr;
  Gtk::TreeView* selected_species_tree = nullptr;
  Gtk::Box* search_box = nullptr;
  Gtk::Entry* species_search = nullptr;
  DropDownBox* species_search_by = nullptr;
  Gtk::Box* found_species_box = nullptr;
  Gtk::Label* found_species_heading = nullptr;
  Gtk::Label* no_found_species_heading = nullptr;
  Gtk::TreeView* found_species_tree = nullptr;

  Glib::RefPtr<Gtk::TreeModelFilter> selected_filter; // null while detached
  Glib::RefPtr<Gtk::TreeSelection> selected_selection;
  SpeciesTreeParts selected_parts;
  Glib::RefPtr<Gtk::TreeModelFilter> found_filter; // null while detached
  Glib::RefPtr<Gtk::TreeSelection> found_selection;
  SpeciesTreeParts found_parts;

  std::vector<Glib::ustring> search_words; // of the current search, in lower case
  SearchBy search_by = SEARCH_BY_COMMON_NAME;
  int num_selected = 0; // at least 1 if any species is selected; not an exact count
  int num_found = 0;    // the number of species that match; 0 in a search for all
  // The results of the search: by species id, and by family in the order of the store.
  std::vector<char> species_matched;
  std::vector<char> families_matched;

private:
  void find_widgets(const Glib::RefPtr<Gtk::Builder>& builder);
  void connect_selected_tree();
  void connect_found_tree();
  void refilter_found();
  void show_selected();
  void show_found();
  std::vector<int> species_to_select() const;
  void replace_found_filter();
  void show_results_from_the_top();
  void go_to_first_result();
  void resize_matches();
  void match_all();
  void note_match(int id);
  bool was_matched(int id) const;
  bool is_family_found(std::size_t row);
  bool has_words(std::size_t row, const Gtk::TreeModelColumn<Glib::ustring>& column);
  const Gtk::TreeModelColumn<Glib::ustring>& searched_column() const;
  const Gtk::TreeModelColumn<Glib::ustring>& shown_column() const;

  SearchedSpecies searched_species;
  std::vector<int> selected_species; // the ids that selected_filter shows
};
