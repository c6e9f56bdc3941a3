#pragma once

#include "ui/drop-down-box.h"
#include "ui/species-list.h"
#include "ui/species-tree.h"

#include <gtkmm/button.h>
#include <gtkmm/checkbutton.h>
#include <gtkmm/grid.h>
#include <gtkmm/label.h>
#include <gtkmm/radiobutton.h>
#include <gtkmm/treestore.h>
#include <gtkmm/treeview.h>

class MyApp;
class RegionFishInfo;
class SurveyWindow;

// The Listed Species page, on which the user marks the species of one view. It also fills the
// two stores of species that all species tables show. Its buttons determine which names all
// tables show.
class ListedPanel : public Gtk::Grid
{
public:
  using SpeciesListItem = ::SpeciesListItem;

  ListedPanel(BaseObjectType* cobject, const Glib::RefPtr<Gtk::Builder>& builder);
  // Connects the page to its window. Call it once, after the constructor.
  void ctor_continued(const Glib::RefPtr<Gtk::Builder>& builder, SurveyWindow* the_window);

  // Offers the views of the survey's subregion and chooses its default view.
  void setup_for_subregion(const Glib::ustring& subregion);
  // Shows the instructions for the species of a region.
  void setup_instructions(RegionFishInfo& info);
  // Fills both stores for the view and the survey type. Without a type they are empty.
  void update_for_view();
  // Chooses the view of a saved survey if the subregion still offers it.
  void set_species_view_carefully(int view_id);
  // Expands the families of marked species.
  void expand_selected_families();
  // Shows the columns that the name buttons select.
  void update_columns();
  // Stores the state of the name buttons in the survey and returns it.
  NameDisplay store_name_display();
  // Appends family and species rows to an empty store.
  void build_species_model(const Glib::RefPtr<Gtk::TreeStore>& model,
                           const std::vector<SpeciesListItem>& species_list);
  // Return the text as markup in one of the two shades of rare species, like the functions of
  // species-instructions.h.
  static Glib::ustring rarecolor(const Glib::ustring& text);
  static Glib::ustring rarecolor2(const Glib::ustring& text);

  // Adapts both pages of species to the chosen view.
  void on_view_changed();
  // Show the names that the buttons select on both pages of species.
  void on_name_display_changed(Gtk::ToggleButton* button);
  void on_spanish_display_changed();
  // Call do_species_line_trigger() for a click or a key. Return its result.
  bool on_species_clicked(GdkEventButton* event);
  bool on_species_kb_event(GdkEventKey* event);
  bool on_species_kb_activated();
  // See trigger_species_line() in species-tree.h. `button` is 0 for a key.
  bool do_species_line_trigger(const Gtk::TreePath& path, int button, unsigned int time);
  // Fills the "ID" cell of a row.
  void render_species_id(Gtk::CellRenderer* cell, const Gtk::TreeIter& iter);

  MyApp* my_app = nullptr;
  SurveyWindow* window = nullptr;
  int page = -1; // the index in the notebook
  Gtk::Label* listed_instructions = nullptr;
  DropDownBox* species_view = nullptr;
  Gtk::RadioButton* name_display_common = nullptr;
  Gtk::RadioButton* name_display_scientific = nullptr;
  Gtk::RadioButton* name_display_both = nullptr;
  Gtk::CheckButton* spanish_enable = nullptr;
  Gtk::TreeView* species_tree = nullptr;
  Gtk::Button* listed_expand_all_button = nullptr;
  Gtk::Button* listed_collapse_all_button = nullptr;
  Glib::RefPtr<Gtk::TreeSelection> species_selection;
  SpeciesTreeParts species_parts;

private:
  void find_widgets(const Glib::RefPtr<Gtk::Builder>& builder);
  void connect_choices();
  void connect_tree();
  void fill_models();

  SpeciesOrder species_order;
};
