#pragma once

#include "ui/drop-down-box.h"

#include <gtkmm/box.h>
#include <gtkmm/builder.h>
#include <gtkmm/entry.h>
#include <gtkmm/grid.h>
#include <gtkmm/label.h>
#include <gtkmm/treeview.h>

class MyApp;
class SurveyWindow;

// The Unlisted Species page: finds and marks species that the view lacks.
class UnlistedPanel : public Gtk::Grid
{
public:
  UnlistedPanel(BaseObjectType* cobject, const Glib::RefPtr<Gtk::Builder>& builder);
  void ctor_continued(const Glib::RefPtr<Gtk::Builder>& builder, SurveyWindow* the_window);

  void setup_for_subregion(const Glib::ustring& subregion);
  void setup_for_survey_subtype();
  // Filters anew for an unchanged search, after an abundance has changed.
  void refilter();
  // The same for the tree of marked species alone.
  void refilter_selected();
  // Shows the columns that the Listed Species page's name buttons ask for.
  void update_columns();

  MyApp* my_app = nullptr;
  SurveyWindow* window = nullptr;
  int page = -1; // in the notebook
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
};
