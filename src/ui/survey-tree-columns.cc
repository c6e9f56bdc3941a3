#include "ui/survey-tree-columns.h"

SurveyTreeColumns::SurveyTreeColumns()
{
  // The toolkit registers WhichDir as a boxed type at its first use.
  add(path);
  add(which_dir);
  add(description);
}

void SurveyTreeColumns::set(const Gtk::TreeRow& row, const std::string& survey_path,
                            MyApp::WhichDir which, const Glib::ustring& survey_description) const
{
  row[path] = survey_path;
  row[which_dir] = which;
  row[description] = survey_description;
}
