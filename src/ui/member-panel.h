#pragma once

#include <gtkmm/builder.h>
#include <gtkmm/entry.h>
#include <gtkmm/grid.h>

class MyApp;
class SurveyWindow;

// The Member Info page. It identifies the member who made the survey.
class MemberPanel : public Gtk::Grid
{
public:
  MemberPanel(BaseObjectType* cobject, const Glib::RefPtr<Gtk::Builder>& builder);
  // Connects the page to its window. Call it once, after the constructor.
  void ctor_continued(const Glib::RefPtr<Gtk::Builder>& builder, SurveyWindow* the_window);

  // Makes Enter move through the first fields. REQUIRES: all panels exist.
  void connect_focus_signals();

  // Return the typed texts without leading and trailing blanks.
  Glib::ustring get_member_id() const;
  Glib::ustring get_last_name() const;

  MyApp* my_app = nullptr;
  SurveyWindow* window = nullptr;
  int page = -1; // the index in the notebook
  Gtk::Entry* member_id = nullptr;
  Gtk::Entry* last_name = nullptr;
};
