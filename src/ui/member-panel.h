#pragma once

#include <gtkmm/builder.h>
#include <gtkmm/entry.h>
#include <gtkmm/grid.h>

class MyApp;
class SurveyWindow;

// The Member Info page: who made the survey.
class MemberPanel : public Gtk::Grid
{
public:
  MemberPanel(BaseObjectType* cobject, const Glib::RefPtr<Gtk::Builder>& builder);
  void ctor_continued(const Glib::RefPtr<Gtk::Builder>& builder, SurveyWindow* the_window);

  // Lets Enter walk through the first fields. Call it once all panels exist.
  void connect_focus_signals();

  // What the user typed, without blanks around it.
  Glib::ustring get_member_id() const;
  Glib::ustring get_last_name() const;

  MyApp* my_app = nullptr;
  SurveyWindow* window = nullptr;
  int page = -1; // in the notebook
  Gtk::Entry* member_id = nullptr;
  Gtk::Entry* last_name = nullptr;
};
