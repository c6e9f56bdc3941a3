#include "core/file-contents.h"
#include "core/long-text.h"
#include "core/markup.h"
#include "core/message-dialog.h"
#include "core/my-app.h"
#include "server/http.h"
#include "store/file-identity.h"
#include "store/survey-file-name.h"
#include "ui/confirm-panel.h"
#include "ui/start-panel.h"
#include "ui/survey-window.h"

#include <giomm/file.h>

#include <cstdio>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

const char* const upload_failed = "Upload Failed!";

// Returns the file's bytes, or nullopt if the file cannot be loaded, is empty, or is not a
// regular file: reading a pipe could block forever. Throws the Glib::Error that GIO throws.
std::optional<std::string> load_survey_file(const std::string& path)
{
  if (Gio::File::create_for_path(path)->query_file_type() == Gio::FILE_TYPE_SPECIAL)
    return std::nullopt;
  std::optional<std::string> contents = load_file(path);
  if (contents && contents->empty())
    return std::nullopt;
  return contents;
}

// Returns whether the file still has the bytes that were sent. Reports a change by another
// program. A file that no longer exists counts as unchanged, because the move reports it.
bool is_unchanged(const std::string& path, const std::string& sent)
{
  const bool is_gone = !Gio::File::create_for_path(path)->query_exists();
  if (is_gone || file_holds(path, sent))
    return true;
  titled_error("Survey File Changed",
               "The survey was uploaded, but another program changed its file meanwhile:\n%s\n"
               "The server does not have these changes. The file stays in Ready To Upload.",
               escape_markup(path).c_str());
  return false;
}

// Returns the part of both success messages that says what the user still has to do.
std::string second_step(const MyApp& app)
{
  const std::string address = escape_markup(app.data_entry_url);
  return "Step 1 of 2 completed. <b>You are not done yet!</b> To transmit your surveys to MAVO, "
         "logon to the MAVO Online Data Entry page (<a href=\"" +
         address + "\">" + address + "</a>) to error check and submit your survey(s).";
}

// Shows the result of an upload. Returns what the user wants to do next.
SurveyWindow::ResponseCode show_outcome(const Glib::ustring& title, const std::string& text)
{
  Message message;
  message.title = title;
  message.text = text;
  message.standard_buttons = Gtk::BUTTONS_OK;
  message.buttons = {{"Open Saved Survey", SurveyWindow::RESPONSE_OPEN_SURVEY},
                     {"Start New Survey", SurveyWindow::RESPONSE_NEW_SURVEY},
                     {"Quit Program", SurveyWindow::RESPONSE_QUIT}};
  message.modal = false;
  const int response = run_message(message);
  return response >= SurveyWindow::RESPONSE_NEW_SURVEY ? SurveyWindow::ResponseCode(response)
                                                       : SurveyWindow::RESPONSE_NONE;
}

int ask(const Glib::ustring& title, const std::string& text, std::vector<Message::Button> buttons)
{
  Message message;
  message.title = title;
  message.text = text;
  message.buttons = std::move(buttons);
  return run_message(message);
}

const Message::Button yes{"gtk-yes", Gtk::RESPONSE_ACCEPT};
const Message::Button no{"gtk-no", Gtk::RESPONSE_NO};
const Message::Button cancel{"gtk-cancel", Gtk::RESPONSE_CANCEL};

int ask_to_upload_all(const std::string& surveys, const char* choices,
                      std::vector<Message::Button> buttons)
{
  return ask("Upload all surveys that are ready?",
             "The following surveys are ready to be uploaded:\n\n" + surveys +
                 "\nUpload all of these now?\nClick Yes to upload all of them now," + choices,
             std::move(buttons));
}

bool wants_to_continue(const std::string& surveys)
{
  return ask("Continue uploading surveys?",
             "Continue uploading remaining surveys?\n\n" + surveys +
                 "\nClick Yes to contine uploading, or\nClick No to stop uploading.",
             {yes, no}) == Gtk::RESPONSE_ACCEPT;
}

// Returns a line such as "Failed to upload one survey." or "Successfully uploaded 3 surveys.".
std::string counted(const std::string& what, int surveys)
{
  if (surveys == 0)
    return "";
  return what + (surveys == 1 ? "one survey.\n" : std::to_string(surveys) + " surveys.\n");
}

const char* outcome_title(int failures, int successes)
{
  if (successes == 0)
    return "Upload Failed";
  return failures == 0 ? "Upload Successful" : "Upload Partially Successful";
}

std::string outcome_text(const MyApp& app, int failures, int successes)
{
  const std::string counts =
      counted("Failed to upload ", failures) + counted("Successfully uploaded ", successes);
  return successes == 0 ? counts : counts + second_step(app);
}

// Sends the file. Returns whether the server accepted it, and shows the reason if not.
bool send_survey(const MyApp& app, const std::string& path, const std::string& contents)
{
  const HttpSession session = open_http_session(debug_level > 0);
  const HttpAnswer answer = http_post(
      *session, app.upload_url, {"survey-file", base_name(path), "application/xml", contents});
  if (debug_level > 0)
    std::printf("upload response code is %d\n", answer.status());

  if (answer.status() != status_created) {
    const char* const reason = answer.header("X-Survey-Upload-Error");
    titled_error(upload_failed, "Failed to upload file: %s",
                 reason ? reason : "Unknown (error header missing)");
    return false;
  }
  if (!answer.header("X-Survey-Upload-Successful")) {
    titled_error(upload_failed, "Confusion: response is %d but success header is missing!?",
                 answer.status());
    return false;
  }
  return true;
}

} // namespace

RetCode SurveyWindow::do_upload_file(const std::string& path)
{
  const std::optional<std::string> contents = load_survey_file(path);
  if (!contents)
    return error("Failed to read survey file %s", escape_markup(path).c_str());
  if (!send_survey(*my_app, path, *contents))
    return RET_FAILURE;

  const bool is_open = same_place(survey.filename, path);
  if (is_open)
    set_survey_is_uploaded();
  std::string moved = path;
  if (is_unchanged(path, *contents)) // the server has the survey even if the move fails
    my_app->move_survey_to(MyApp::WD_UPLOADED, moved);
  start_panel->build_survey_model();
  if (is_open)
    survey.filename = moved;
  return RET_SUCCESS;
}

void SurveyWindow::do_upload_single(const std::string& path)
{
  discarded_text.clear(); // it belongs to an earlier question
  ResponseCode next = RESPONSE_NONE;
  if (do_upload_file(path) == RET_SUCCESS)
    next =
        show_outcome("Upload Successful", "Survey uploaded successfully.\n" + second_step(*my_app));
  check_for_updates(nullptr, next);
}

void SurveyWindow::do_upload_all_ready(const std::vector<std::string>& list)
{
  discarded_text.clear(); // it belongs to an earlier question
  int failures = 0;
  int successes = 0;
  for (const auto& path : list) {
    if (do_upload_file(path) == RET_SUCCESS) {
      ++successes;
      continue;
    }
    ++failures;
    take_out_of_queue(path);
    const auto remaining = my_app->get_ready_survey_list();
    if (!remaining.empty() && !wants_to_continue(described(remaining)))
      break;
  }
  start_panel->build_survey_model();
  const ResponseCode next =
      show_outcome(outcome_title(failures, successes), outcome_text(*my_app, failures, successes));
  check_for_updates(nullptr, next);
}

void SurveyWindow::take_out_of_queue(const std::string& path)
{
  const bool is_open = same_place(survey.filename, path);
  std::string moved = path;
  my_app->move_survey_to(MyApp::WD_IN_PROGRESS, moved);
  if (is_open)
    survey.filename = moved;
}

std::string SurveyWindow::described(const std::vector<std::string>& surveys) const
{
  return escape_markup(
      shorten_text(my_app->prettify_survey_list(surveys, survey.filename), longest_part));
}

void SurveyWindow::on_upload_button()
{
  if (!save_for_upload())
    return;
  const std::string path = survey.filename; // uploading changes the member
  const auto ready = my_app->get_ready_survey_list();
  if (ready.size() < 2) {
    do_upload_single(path);
    return;
  }
  switch (ask_to_upload_all(described(ready),
                            "\nClick No to upload only the currently open survey, or\n"
                            "Click Cancel to not upload anything yet.",
                            {yes, no, cancel})) {
  case Gtk::RESPONSE_CANCEL:
    break;
  case Gtk::RESPONSE_ACCEPT:
    do_upload_all_ready(ready);
    break;
  default:
    do_upload_single(path);
  }
}

bool SurveyWindow::save_for_upload()
{
  confirm_panel->refresh();
  if (survey.survey_complete)
    return do_save(MyApp::WD_READY_TO_UPLOAD, SAVE_QUIET) == RET_SUCCESS;
  titled_error("Can't upload yet", "Survey data is missing or invalid.");
  notebook->set_current_page(confirm_panel->page);
  return false;
}

void SurveyWindow::on_action_FileUploadThis(const std::string&)
{
  if (survey.is_uploaded) {
    titled_error("ERROR: Survey Already Uploaded!!!",
                 "This survey was already uploaded and cannot be changed offline.");
    return;
  }
  if (!save_for_upload())
    return;
  const std::string path = survey.filename; // uploading changes the member
  do_upload_single(path);
}

void SurveyWindow::on_action_FileUploadAll(const std::string&)
{
  // Uploads the open survey only if it is already in the queue. In that case, first saves its
  // changes, so that the server gets what is on the screen.
  const bool is_queued =
      belongs_to(survey.filename, my_app->get_survey_dir(MyApp::WD_READY_TO_UPLOAD));
  if (is_queued && file_needs_saving() &&
      do_save(MyApp::WD_READY_TO_UPLOAD, SAVE_QUIET) != RET_SUCCESS)
    return; // an upload of the old file would make it impossible to save the changes

  const auto ready = my_app->get_ready_survey_list();
  if (ready.empty()) {
    titled_error("No Surveys Ready!",
                 "No surveys are marked as ready to upload.\nFor each survey that you wish to "
                 "upload, please open it and then click the \"Mark For Upload\" button.");
    return;
  }
  if (ask_to_upload_all(described(ready), " or\nClick Cancel to not upload anything yet.",
                        {yes, cancel}) == Gtk::RESPONSE_ACCEPT)
    do_upload_all_ready(ready);
}
