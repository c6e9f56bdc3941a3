#include "server/server-test.h"

#include "core/my-app.h"
#include "ui/survey-panel2.h"
#include "ui/survey-window.h"

void ServerTest::SetUp()
{
  SavingTest::SetUp();
  my_app->local_data_dir = application_dir.root + "/local";
}

TestServer& ServerTest::serve(const std::vector<std::string>& options)
{
  server = std::make_unique<TestServer>(options);
  use_server_at(server->address());
  return *server;
}

void ServerTest::use_server_at(const std::string& address) const
{
  my_app->upload_url = address + "/dataentry/upload-survey.php";
  my_app->version_query_url = address + "/offline-data-entry/?get-version=";
}

void ServerTest::enter_complete_survey()
{
  enter_survey();
  const SurveyPanel2& conditions = *window->survey_panel2;
  conditions.bottom_time->set_text("45");
  choose(*conditions.visibility, "Good");
  choose(*conditions.avg_depth, "Shallow");
  choose(*conditions.max_depth, "Deep");
  choose(*conditions.current, "None");
  choose(*conditions.habitat, "Wall");
}

std::string ServerTest::put(MyApp::WhichDir which, const std::string& name,
                            const std::string& text) const
{
  std::string path = my_app->get_survey_dir(which) + "/" + name;
  write_file(path, text);
  return path;
}

Glib::ustring ServerTest::second_step() const
{
  return "Step 1 of 2 completed. You are not done yet! To transmit your surveys to MAVO, logon to "
         "the MAVO Online Data Entry page (" +
         my_app->data_entry_url + ") to error check and submit your survey(s).";
}

void ServerTest::expect_next_steps(const SeenDialog& seen) const
{
  const std::string& address = my_app->data_entry_url;
  const std::string link = "<a href=\"" + address + "\">" + address + "</a>";
  EXPECT_NE(std::string::npos, seen.markup.raw().find(link)) << seen.markup;
  EXPECT_NE(std::string::npos, seen.markup.raw().find("<b>You are not done yet!</b>"));
  EXPECT_EQ(Gtk::MESSAGE_INFO, seen.message_type);
  EXPECT_TRUE(seen.has_icon);
  const std::vector<Glib::ustring> buttons = {"_OK", "Open Saved Survey", "Start New Survey",
                                              "Quit Program"};
  EXPECT_EQ(buttons, seen.buttons);
  EXPECT_EQ((std::vector<int>{Gtk::RESPONSE_OK, SurveyWindow::RESPONSE_OPEN_SURVEY,
                              SurveyWindow::RESPONSE_NEW_SURVEY, SurveyWindow::RESPONSE_QUIT}),
            seen.responses);
}

std::vector<Glib::ustring> titles_of(const std::vector<SeenDialog>& dialogs)
{
  std::vector<Glib::ustring> titles;
  titles.reserve(dialogs.size());
  for (const auto& dialog : dialogs)
    titles.push_back(dialog.title);
  return titles;
}
