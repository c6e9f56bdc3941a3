#pragma once

#include "core/my-app.h"
#include "ui/survey-tree-columns.h"

#include <gtkmm/builder.h>
#include <gtkmm/button.h>
#include <gtkmm/grid.h>
#include <gtkmm/treestore.h>
#include <gtkmm/treeview.h>

#include <string>

class SurveyWindow;

// The Start/Open Survey page: all saved surveys by state.
class StartPanel : public Gtk::Grid
{
public:
  StartPanel(BaseObjectType* cobject, const Glib::RefPtr<Gtk::Builder>& builder);
  void ctor_continued(const Glib::RefPtr<Gtk::Builder>& builder, SurveyWindow* the_window);

  // Reads the store anew. Call it whenever the store has changed.
  void build_survey_model();
  // The path in the row under the cursor, empty on a heading or without a row.
  // Its state goes to `which`, which may be null.
  std::string lookup_selected_survey(MyApp::WhichDir* which);

  // The state of the buttons while no survey is selected.
  void deselect_survey();

  void on_new_survey_button();
  void on_edit_view_button();

  MyApp* my_app = nullptr;
  SurveyWindow* window = nullptr;
  int page = -1; // in the notebook
  Gtk::TreeView* survey_tree = nullptr;
  SurveyTreeColumns columns;
  Glib::RefPtr<Gtk::TreeStore> store;
  Glib::RefPtr<Gtk::TreeSelection> selection;
  Gtk::Button* updates_button = nullptr;
  Gtk::Button* new_survey_button = nullptr;
  Gtk::Button* upload_all_button = nullptr;
  Gtk::Button* edit_view_button = nullptr;
  Gtk::Button* mark_button = nullptr;
  Gtk::Button* upload_button = nullptr;
  Gtk::Button* delete_button = nullptr;
};
