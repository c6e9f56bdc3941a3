#pragma once

#include "ui/drop-down-box.h"
#include "ui/geog-tree-columns.h"
#include "ui/zone-tree.h"

#include <gtkmm/builder.h>
#include <gtkmm/entry.h>
#include <gtkmm/grid.h>
#include <gtkmm/label.h>
#include <gtkmm/treestore.h>
#include <gtkmm/treeview.h>

class MyApp;
class SurveyWindow;

// The Survey Info Part 1 page: location and time. The chosen subregion determines the choices on
// all later pages.
class SurveyPanel1 : public Gtk::Grid
{
public:
  SurveyPanel1(BaseObjectType* cobject, const Glib::RefPtr<Gtk::Builder>& builder);
  // Connects the page to its window. Call it once, after the constructor.
  void ctor_continued(const Glib::RefPtr<Gtk::Builder>& builder, SurveyWindow* the_window);

  // Adapts the survey and all panels to a subregion. If the survey had another subregion, clears
  // the entries that depend on it. Opening a survey also calls this function.
  void setup_for_subregion(const Glib::ustring& code);
  // Chooses the survey type of a saved survey, even if the box no longer offers the type.
  void set_survey_subtype_even_invisible(const Glib::ustring& subregion_code, int id);
  // Shows the zones that match the search.
  void rebuild_zone_tree();
  // Makes the page read-only. The search for zones remains enabled.
  void disable_inputs();
  // Turns to this page and gives the focus to one of its widgets.
  void focus_on(Gtk::Widget* widget);

  // Returns the zone code without leading and trailing blanks.
  Glib::ustring get_zonecode() const;
  // Returns the hour of the start as four digits, or "0000" if none is chosen.
  Glib::ustring get_dive_start_string() const;

  // Calls setup_for_subregion(). If this would clear marked species, first asks the user.
  void on_subregion_changed();
  // Adapts the survey and the later pages to the chosen type.
  void on_survey_subtype_changed();
  // Shows the name of the zone with the entered code.
  void on_zonecode_changed();
  // Calls rebuild_zone_tree() if the survey has a location.
  void on_zone_search_changed();
  // Enters the code of the zone under the cursor if the zone is complete. Otherwise expands or
  // collapses the zone.
  void on_geog_clicked();

  MyApp* my_app = nullptr;
  SurveyWindow* window = nullptr;
  Glib::ustring site_text;         // the zone's part of the window's title
  bool zone_complete = false;      // the code is a known zone with more than seven digits
  bool triggers_suppressed = true; // the panel is setting its own widgets; not re-entrant
  GeogTreeColumns geog_columns;
  Glib::RefPtr<Gtk::TreeStore> geog_store;
  int page = -1; // the index in the notebook
  DropDownBox* subregion = nullptr;
  DropDownBox* survey_subtype = nullptr;
  DropDownBox* month = nullptr;
  DropDownBox* mday = nullptr;
  DropDownBox* year = nullptr;
  DropDownBox* dive_start = nullptr;
  Gtk::Entry* zonecode = nullptr;
  Gtk::Label* zone_name_status = nullptr;
  Gtk::Label* zone_name = nullptr;
  Gtk::Entry* zone_search = nullptr;
  Gtk::Label* no_geog_matches = nullptr;
  Gtk::TreeView* geog_tree = nullptr;
  Glib::RefPtr<Gtk::TreeSelection> geog_selection;

private:
  // Returns whether the panel is setting its own widgets, so that `handler` must do nothing. In
  // that case, prints the name of the handler to the trace.
  bool suppressed(const char* handler) const;
  void find_widgets(const Glib::RefPtr<Gtk::Builder>& builder);
  void fill_boxes();
  void prepare_zone_tree();
  // Places the list of zones beside the form, or below it if the text is too large for both in a
  // window of the usual width.
  void place_zones();
  void connect_signals();
  // Shows a subregion in its box, or nothing if the box does not offer it.
  void show_subregion(const Glib::ustring& code);
  void move_survey_to_subregion(const Glib::ustring& code);
  int count_marked_species() const;
  // Asks the user whether to clear the marked species, and returns whether the user agrees.
  bool may_clear_species(int count);
  void copy_type_properties(int id);
  void show_species_of_type();
  bool is_searching_zones() const;
  void go_to_first_zone();
  void show_zone(const Glib::ustring& status, const Glib::ustring& name, const Glib::ustring& site);

  Gtk::Grid* zone_list = nullptr; // the search and the tree of zones
  ZoneTree zones;                 // the zones of the survey's subregion
  bool folding = false;           // a row is being collapsed, so a moved cursor is not a click
};
