#include "core/markup.h"
#include "core/message-dialog.h"
#include "store/survey-file-dialog.h"
#include "ui/start-panel.h"
#include "ui/survey-window.h"

#include <unistd.h>

#include <cstdio>

namespace {

bool really_delete(const std::string& description)
{
  Message message;
  message.title = "Really delete saved survey?";
  message.text = "Really delete this survey?\n\n" + escape_markup(description);
  message.buttons = {{"gtk-yes", Gtk::RESPONSE_ACCEPT}, {"gtk-cancel", Gtk::RESPONSE_CANCEL}};
  return run_message(message) == Gtk::RESPONSE_ACCEPT;
}

} // namespace

bool SurveyWindow::maybe_delete_survey(const std::string& path)
{
  const std::string description = my_app->get_survey_description(path, nullptr);
  if (description.empty()) {
    titled_error("Not a survey file?", "%s does not appear to be a saved survey file!",
                 escape_markup(path).c_str());
    return false;
  }
  if (!really_delete(description))
    return false;
  if (unlink(path.c_str()) != 0) {
    titled_error_errno("Deletion Failed", "Failed to delete survey file %s",
                       escape_markup(path).c_str());
    return false;
  }
  start_panel->build_survey_model();
  return true;
}

void SurveyWindow::on_action_FileDelete(const std::string&)
{
  const std::string directory = my_app->get_survey_dir(MyApp::WD_ROOT);
  if (debug_level > 2)
    printf("survey dir is %s\n", directory.c_str());

  SurveyFileDialog dialog(*this, "Delete saved survey", directory, Gtk::Stock::DELETE);
  dialog.offer({"*.MAVO-Survey"});
  const int response = dialog.run();
  if (response != Gtk::RESPONSE_OK) {
    if (debug_level > 0)
      printf("filedlg for delete returned %d\n", response);
    return;
  }
  dialog.hide();
  const std::string path = dialog.get_filename();
  if (debug_level > 0)
    printf("filedlg for open selected %s\n", path.c_str()); // both dialogs print this text
  maybe_delete_survey(path);
}
