#pragma once

#include <gtkmm/builder.h>
#include <gtkmm/checkbutton.h>
#include <gtkmm/grid.h>

class MyApp;
class SurveyWindow;

// The Confirmation page: the whole survey at a glance, checked.
class ConfirmPanel : public Gtk::Grid
{
public:
  ConfirmPanel(BaseObjectType* cobject, const Glib::RefPtr<Gtk::Builder>& builder);
  void ctor_continued(const Glib::RefPtr<Gtk::Builder>& builder, SurveyWindow* the_window);

  // Shows and checks the survey as it is now.
  void refresh();

  MyApp* my_app = nullptr;
  SurveyWindow* window = nullptr;
  int page = -1; // in the notebook
  Gtk::CheckButton* confirm_bottom_time = nullptr;
};
