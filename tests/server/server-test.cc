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
  ask_server_at(server->address());
  return *server;
}

void ServerTest::ask_server_at(const std::string& address) const
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

std::vector<Glib::ustring> titles_of(const std::vector<SeenDialog>& dialogs)
{
  std::vector<Glib::ustring> titles;
  for (const auto& dialog : dialogs)
    titles.push_back(dialog.title);
  return titles;
}
