#include "ui/start-panel.h"

#include "ui/survey-window.h"

StartPanel::StartPanel(BaseObjectType* cobject, const Glib::RefPtr<Gtk::Builder>&)
    : Gtk::Grid(cobject), store(Gtk::TreeStore::create(columns))
{
}

void StartPanel::ctor_continued(const Glib::RefPtr<Gtk::Builder>& builder, SurveyWindow* the_window)
{
  window = the_window;
  my_app = window->my_app;
  builder->get_widget("survey_tree", survey_tree);
  builder->get_widget("startp_updates_button", updates_button);
  builder->get_widget("startp_new_survey_button", new_survey_button);
  builder->get_widget("startp_upload_all_button", upload_all_button);
  builder->get_widget("startp_edit_view_button", edit_view_button);
  builder->get_widget("startp_mark_button", mark_button);
  builder->get_widget("startp_upload_button", upload_button);
  builder->get_widget("startp_delete_button", delete_button);
  new_survey_button->signal_clicked().connect(
      sigc::mem_fun(*this, &StartPanel::on_new_survey_button));

  survey_tree->set_model(store);
  survey_tree->append_column("Survey", columns.description);
  selection = survey_tree->get_selection();
  build_survey_model();
  deselect_survey();
}

void StartPanel::build_survey_model() {}

std::string StartPanel::lookup_selected_survey(MyApp::WhichDir* which)
{
  if (which)
    *which = MyApp::WD_NOT_A_SURVEY;
  return {};
}

void StartPanel::deselect_survey()
{
  edit_view_button->set_label("Edit");
  edit_view_button->set_sensitive(false);
  mark_button->set_label("Mark For Upload");
  mark_button->set_sensitive(false);
  mark_button->hide();
  upload_button->set_sensitive(false);
  delete_button->set_sensitive(false);
}

void StartPanel::on_new_survey_button()
{
  window->on_action_FileNew("FileNew");
}

void StartPanel::on_edit_view_button() {}
