#include "core/markup.h"
#include "core/message-dialog.h"
#include "core/text.h"
#include "core/version.h"
#include "data/data-file-info.h"
#include "server/http.h"
#include "ui/next-window.h"
#include "ui/survey-window.h"

#include <cstdio>
#include <optional>
#include <string>

namespace {

const char* const out_of_reach = "Can't reach MAVO server";

// The server's answer about the newest program. Its texts are markup.
struct ProgramNews {
  std::string version;
  std::string url;
};

// The server's answer about the newest data.
struct DataNews {
  std::string timestamp;
  std::string updated;
  std::string url;
};

const char* or_else(const char* header, const char* absent)
{
  return header ? header : absent;
}

// This function and the next one query the server. They return nullopt if the request fails or
// the answer lacks a header.

std::optional<ProgramNews> ask_for_program(SoupSession& session, const MyApp& app)
{
  const std::string address = app.version_query_url + MAVO_PLATFORM;
  const HttpAnswer answer = http_get(session, address);
  const char* const version = answer.header("X-Current-App-Version-Is");
  const char* const url = answer.header("X-Download-App-From");
  if (debug_level > 0) {
    std::printf("version query response code is %d\n", answer.status());
    std::printf("GET %s returned %d, version %s, url %s\n", address.c_str(), answer.status(),
                or_else(version, "(none)"), or_else(url, "(none)"));
  }
  if (answer.status() != status_ok || !version || !url)
    return std::nullopt;
  return ProgramNews{version, url};
}

std::optional<DataNews> ask_for_data(SoupSession& session, const MyApp& app)
{
  const std::string address = app.version_query_url + "data-files";
  const HttpAnswer answer = http_get(session, address);
  const char* const timestamp = answer.header("X-Current-Data-Version-Is");
  const char* const updated = answer.header("X-Data-Last-Updated-Is");
  const char* const url = answer.header("X-Download-Data-Files-From");
  if (debug_level > 0) {
    std::printf("data version query response code is %d\n", answer.status());
    std::printf("GET %s returned %d, version %s, last updated %s, url %s\n", address.c_str(),
                answer.status(), or_else(timestamp, "(none)"), or_else(updated, "(unknown)"),
                or_else(url, "(none)"));
  }
  if (answer.status() != status_ok || !timestamp || !updated || !url)
    return std::nullopt;
  return DataNews{timestamp, updated, url};
}

std::string link_markup(const std::string& url)
{
  return "<a href=\"" + url + "\">" + url + "</a>";
}

// Returns a link to the address as markup. The server sends the address as markup. Escapes the
// address if the link would otherwise not be valid markup.
std::string readable_link(const std::string& url)
{
  const std::string link = link_markup(url);
  return is_label_markup(link) ? link : link_markup(escape_markup(url));
}

bool wants_to_go_on(const ProgramNews& news, const char* action)
{
  Message message;
  message.title = "New program version is available";
  message.text = std::string("You are running version ") + BuildInfo::version_str +
                 " of this program, but version " + readable_markup(news.version).raw() +
                 "\nis now available at " + readable_link(news.url);
  if (action) {
    message.text += std::string("\nDo you want to continue anyway?\nClick Yes to ") + action +
                    ",\nor click Cancel to do nothing at this time.";
    message.buttons = {{"gtk-yes", Gtk::RESPONSE_ACCEPT}, {"gtk-cancel", Gtk::RESPONSE_CANCEL}};
  } else {
    message.buttons = {{"gtk-ok", Gtk::RESPONSE_ACCEPT}};
  }
  return run_message(message) == Gtk::RESPONSE_ACCEPT;
}

int ask_about_new_data(const std::string& current, const DataNews& news, const char* action)
{
  Message message;
  message.title = "New data files are available";
  message.text = "You are using data files from " + readable_markup(current) +
                 ", but data files updated " + readable_markup(news.updated) +
                 " are now available for download.\nDownload them now and restart the program?\n"
                 "Click Yes to download the new data files";
  message.buttons = {{"gtk-yes", Gtk::RESPONSE_ACCEPT}};
  if (action) {
    message.text += std::string(" and not ") + action + ",\nClick No to " + action;
    message.buttons.push_back({"gtk-no", Gtk::RESPONSE_NO});
  }
  message.text += ",\nor click Cancel to do nothing at this time.";
  message.buttons.push_back({"gtk-cancel", Gtk::RESPONSE_CANCEL});
  return run_message(message);
}

void show_up_to_date()
{
  Message message;
  message.title = "Program and Data are Up To Date";
  message.text = "You are running the best available version of the program,\n"
                 "and your data files are up to date.\nThanks for checking!";
  message.standard_buttons = Gtk::BUTTONS_OK;
  message.modal = false;
  run_message(message);
}

// Asks the server, shows the answer, and installs new data if the user agrees. `window` is
// the window that the user works in.
RetCode look_for_news(SurveyWindow& window, const char* action)
{
  const MyApp& app = *window.my_app;
  const HttpSession session = open_http_session(debug_level >= 2);
  const auto program = ask_for_program(*session, app);
  if (!program)
    return titled_error(out_of_reach, "Failed to contact MAVO server");

  // Reports any other version, even one that is lower than the program's own.
  RetCode result = RET_SUCCESS;
  const bool is_other_program = program->version != BuildInfo::version_str;
  if (is_other_program && !wants_to_go_on(*program, action))
    result = RET_DECLINED;

  const auto data = ask_for_data(*session, app);
  if (!data)
    return titled_error(out_of_reach, "Failed to consistently contact MAVO server");
  if (data->timestamp == app.data_file_info->timestamp) {
    if (!action && !is_other_program)
      show_up_to_date();
    return result;
  }
  switch (ask_about_new_data(app.data_file_info->updated, *data, action)) {
  case Gtk::RESPONSE_ACCEPT:
    return window.download_data_files(session.get(), data->url.c_str());
  case Gtk::RESPONSE_NO:
    return result;
  default:
    return RET_DECLINED;
  }
}

} // namespace

void SurveyWindow::manual_check_for_updates()
{
  if (check_file_save_okay("checking for updates"))
    check_for_updates(nullptr, RESPONSE_NONE);
}

RetCode SurveyWindow::check_for_updates(const char* action, ResponseCode next)
{
  return go_on_after_check(look_for_news(*this, action), next);
}

RetCode SurveyWindow::go_on_after_check(RetCode result, ResponseCode next)
{
  switch (next) {
  case RESPONSE_NEW_SURVEY:
    on_action_FileNew("FileNew");
    return result;
  case RESPONSE_QUIT:
    if (check_file_save_okay("exiting this program"))
      hide();
    return result;
  case RESPONSE_OPEN_SURVEY: {
    const RetCode opened = select_and_open_saved_survey();
    if (result == RET_DATA_INSTALLED && opened != RET_SUCCESS)
      swap_window();
    return opened;
  }
  default:
    if (result == RET_DATA_INSTALLED)
      swap_window();
    return result;
  }
}

void SurveyWindow::swap_window()
{
  // After an upload, the user has not been asked about unsaved changes in this window.
  const bool is_discarded = same_bytes(entered_text(), discarded_text);
  if (!is_discarded && !check_file_save_okay("restarting the program"))
    return;
  NextWindow next(*my_app);
  // If the new data lack the survey's location, this window stays, with the old tables.
  if (!survey.filename.empty() && next.window->do_open(survey.filename) != RET_SUCCESS)
    return;
  next.take_the_place_of(*this);
}
