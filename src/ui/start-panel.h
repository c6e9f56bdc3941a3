#pragma once

#include "core/my-app.h"
#include "ui/survey-tree-columns.h"

#include <gtkmm/builder.h>
#include <gtkmm/button.h>
#include <gtkmm/grid.h>
#include <gtkmm/treestore.h>
#include <gtkmm/treeview.h>

#include <map>
#include <string>

class SurveyWindow;

// The Start/Open Survey page: all saved surveys by state, and buttons for the selected one.
class StartPanel : public Gtk::Grid
{
public:
  StartPanel(BaseObjectType* cobject, const Glib::RefPtr<Gtk::Builder>& builder);
  // Connects the page to its window. Call it once, after the constructor.
  void ctor_continued(const Glib::RefPtr<Gtk::Builder>& builder, SurveyWindow* the_window);

  // Reads the store and rebuilds the list. Call it whenever the store has changed.
  void build_survey_model();
  // Returns the path of the survey under the cursor, or an empty text if the cursor is on a
  // heading or on no row. Stores its state in `which` unless that is null.
  std::string lookup_selected_survey(MyApp::WhichDir* which);
  // Shows the buttons for a row. Mouse button 1 expands or collapses a heading. Returns whether
  // the row exists.
  bool do_survey_line_trigger(const Gtk::TreePath& path, int button, unsigned int time);
  // Disables the buttons that need a selected survey.
  void deselect_survey();

  // Handlers of the buttons. The last four use the survey under the cursor.
  void on_updates_button();
  void on_new_survey_button();
  void on_upload_all_button();
  void on_edit_view_button();
  void on_mark_button();
  void on_upload_button();
  void on_delete_button();
  // Call do_survey_line_trigger() for a click or a key. Return its result.
  bool on_survey_clicked(GdkEventButton* event);
  bool on_survey_kb_event(GdkEventKey* event);
  bool on_survey_kb_activated();

  MyApp* my_app = nullptr;
  SurveyWindow* window = nullptr;
  int page = -1; // the index in the notebook
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

private:
  // Descriptions by member id, then by path. This is their order in the list.
  using SurveysByMember = std::map<int, std::map<std::string, Glib::ustring>>;

  void find_widgets(const Glib::RefPtr<Gtk::Builder>& builder);
  void connect_buttons();
  void connect_tree();
  SurveysByMember read_surveys(MyApp::WhichDir which) const;
  void append_state(MyApp::WhichDir which, const char* heading);
  void add_surveys(const Gtk::TreeRow& parent, MyApp::WhichDir which,
                   const std::map<std::string, Glib::ustring>& surveys);
  void show_actions_for(MyApp::WhichDir which);
  void show_tooltips_for(MyApp::WhichDir which);
};
