#include "core/displayed-text.h"
#include "core/markup.h"
#include "core/message-dialog.h"
#include "core/thrown-text.h"
#include "store/file-identity.h"
#include "store/show-survey.h"
#include "store/survey-file-dialog.h"
#include "store/unlisted-year.h"
#include "ui/confirm-panel.h"
#include "ui/listed-panel.h"
#include "ui/member-panel.h"
#include "ui/next-window.h"
#include "ui/survey-panel1.h"
#include "ui/survey-panel2.h"
#include "ui/survey-window.h"
#include "ui/tooltips.h"
#include "ui/unlisted-panel.h"

#include <cstdio>
#include <utility>

RetCode SurveyWindow::select_and_open_saved_survey()
{
  const std::string directory = my_app->get_survey_dir(MyApp::WD_IN_PROGRESS);
  if (debug_level > 2)
    printf("survey dir is %s\n", directory.c_str());
  if (!check_file_save_okay("closing it to open a different survey"))
    return RET_DECLINED;

  SurveyFileDialog dialog(*this, "Open saved survey", directory, Gtk::Stock::OPEN);
  dialog.offer({"*.MAVO-Survey", "*.MAVO_survey"});
  const int response = dialog.run();
  if (response != Gtk::RESPONSE_OK) {
    if (debug_level > 0)
      printf("filedlg for open returned %d\n", response);
    return RET_DECLINED;
  }
  dialog.hide();
  NextWindow next(*my_app);
  const std::string path = dialog.get_filename();
  if (debug_level > 0)
    printf("filedlg for open selected %s\n", path.c_str());
  const RetCode result = next.window->do_open(path);
  if (result == RET_SUCCESS)
    next.take_the_place_of(*this);
  return result;
}

void SurveyWindow::on_filedlg_update_preview(Gtk::FileChooserDialog* dialog, Gtk::Label* preview)
{
  preview->hide();
  const std::string path = dialog->get_preview_filename();
  if (path.empty())
    return;
  const std::string description = my_app->get_survey_description(path, nullptr);
  if (description.empty())
    return;
  preview->set_text(displayed_text(description));
  preview->show();
}

RetCode SurveyWindow::do_open(std::string path)
{
  try {
    const SurveyReading reading = read_survey_elements(path);
    survey = SurveyData();
    show_survey(reading, *this);
    remember_as_unchanged(); // even if the document would differ from the file
    show_loaded_species();
    notebook->set_current_page(confirm_panel->page);
    if (belongs_to(path, my_app->get_survey_dir(MyApp::WD_UPLOADED)))
      set_survey_is_uploaded();
    survey.filename = std::move(path);
    report_unlisted_year(*this);
    return RET_SUCCESS;
  } catch (...) {
    const Glib::ustring reason = thrown_text("Unknown error (sorry!)", "");
    return titled_error("ERROR: Survey NOT loaded!", "%s: %s", escape_markup(path).c_str(),
                        escape_markup(reason).c_str());
  }
}

void SurveyWindow::show_loaded_species()
{
  const auto update = sigc::mem_fun(*this, &SurveyWindow::update_from_abundance);
  listed_model->foreach_iter(update);
  unlisted_model->foreach_iter(update);
  listed_panel->expand_selected_families();
  unlisted_panel->refilter();
}

void SurveyWindow::set_survey_is_uploaded()
{
  survey.is_uploaded = true;
  uploaded_bar->show();
  for (auto* button : {save_button, upload_button, ready_button})
    button->set_sensitive(false);
  fields.lock(*member_panel);
  survey_panel1->disable_inputs();
  survey_panel2->disable_inputs();
  confirm_panel->confirm_bottom_time->set_sensitive(false);
  show_current_tooltips(*this);
}
