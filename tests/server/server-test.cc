#include "server/server-test.h"

#include "core/my-app.h"

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
