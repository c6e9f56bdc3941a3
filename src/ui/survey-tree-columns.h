#pragma once

#include "core/my-app.h"

#include <gtkmm/treeiter.h>
#include <gtkmm/treemodelcolumn.h>

// The columns of the list of saved surveys. A heading has an empty path and the state
// WD_NOT_A_SURVEY.
class SurveyTreeColumns : public Gtk::TreeModelColumnRecord
{
public:
  SurveyTreeColumns();
  // Writes all columns of a row.
  void set(const Gtk::TreeRow& row, const std::string& survey_path, MyApp::WhichDir which,
           const Glib::ustring& survey_description) const;

  Gtk::TreeModelColumn<std::string> path;
  Gtk::TreeModelColumn<MyApp::WhichDir> which_dir;
  Gtk::TreeModelColumn<Glib::ustring> description;
};
