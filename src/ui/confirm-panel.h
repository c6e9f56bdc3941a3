#pragma once

#include <gtkmm/box.h>
#include <gtkmm/builder.h>
#include <gtkmm/checkbutton.h>
#include <gtkmm/grid.h>
#include <gtkmm/label.h>
#include <gtkmm/treeview.h>

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
  // Each value stands beside the label that names it.
  Gtk::Label* confirm_instructions = nullptr;
  Gtk::Label* conf_label_member_id = nullptr;
  Gtk::Label* conf_member_id = nullptr;
  Gtk::Label* conf_label_last_name = nullptr;
  Gtk::Label* conf_last_name = nullptr;
  Gtk::Label* conf_label_survey_type = nullptr;
  Gtk::Label* conf_survey_type = nullptr;
  Gtk::Label* conf_label_survey_date = nullptr;
  Gtk::Label* conf_survey_date = nullptr;
  Gtk::Label* conf_label_dive_start = nullptr;
  Gtk::Label* conf_dive_start = nullptr;
  Gtk::Label* conf_label_zone_code = nullptr;
  Gtk::Label* conf_zone_code = nullptr;
  Gtk::Label* conf_zone_name = nullptr;
  Gtk::Label* conf_label_surface_temp = nullptr;
  Gtk::Label* conf_surface_temp = nullptr;
  Gtk::Label* conf_label_bottom_temp = nullptr;
  Gtk::Label* conf_bottom_temp = nullptr;
  Gtk::Label* conf_label_bottom_time = nullptr;
  Gtk::Label* conf_bottom_time = nullptr;
  Gtk::Label* conf_label_visibility = nullptr;
  Gtk::Label* conf_visibility = nullptr;
  Gtk::Label* conf_label_avg_depth = nullptr;
  Gtk::Label* conf_avg_depth = nullptr;
  Gtk::Label* conf_label_max_depth = nullptr;
  Gtk::Label* conf_max_depth = nullptr;
  Gtk::Label* conf_label_current = nullptr;
  Gtk::Label* conf_current = nullptr;
  Gtk::Label* conf_label_habitat = nullptr;
  Gtk::Label* conf_habitat = nullptr;
  Gtk::Label* conf_label_total_species = nullptr;
  Gtk::Label* conf_total_species = nullptr;
  Gtk::Label* conf_listed_species = nullptr;
  Gtk::Label* conf_unlisted_species = nullptr;
  Gtk::CheckButton* confirm_bottom_time = nullptr; // confirms an unusual time
  Gtk::Box* conf_listed_box = nullptr;
  Gtk::TreeView* conf_listed_tree = nullptr;
  Gtk::Box* conf_unlisted_box = nullptr;
  Gtk::TreeView* conf_unlisted_tree = nullptr;

private:
  void find_labels(const Glib::RefPtr<Gtk::Builder>& builder);
};
