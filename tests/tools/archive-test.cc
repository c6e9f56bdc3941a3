#include "support/test-server.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "tools/raw-exchange.h"

namespace fs = std::filesystem;

namespace {

std::string fetch(const TestServer& server)
{
  const auto path = "/offline-data-entry/current-offline-data.tar.bz2";
  return send_request(server.port, get_request(path));
}

// Unpacks an archive into the directory of a new data set. Returns false if that fails.
bool unpack(const std::string& archive, const DataSet& target)
{
  target.file("archive", archive);
  const std::string command = "bzip2 -dc '" + target.dir + "archive' 2>/dev/null | tar -C '" +
                              target.dir + "' -xf - 2>/dev/null";
  return std::system(command.c_str()) == 0;
}

} // namespace

TEST(SurveyServerArchive, HasTheCompleteDataSetInOneDirectory)
{
  const TestServer server;
  const std::string answer = fetch(server);
  EXPECT_EQ(200, status_of(answer));
  EXPECT_EQ("application/x-bzip2", header_of(answer, "Content-Type"));

  const DataSet target;
  ASSERT_TRUE(unpack(body_of(answer), target));
  int files = 0;
  for (const auto& entry : fs::directory_iterator(server.data)) {
    const std::string name = entry.path().filename().string();
    EXPECT_EQ(read_file(entry.path().string()), read_file(target.dir + "data-files/" + name));
    ++files;
  }
  EXPECT_GT(files, 10);
}

TEST(SurveyServerArchive, IsPackedForEachRequestFromADirectoryWithAnyName)
{
  const DataSet offered;
  const std::string dir = offered.dir + "it's -- \"new\" $data";
  write_file(dir + "/data-file-info.txt", "first");
  const TestServer server({"--data", dir});
  fetch(server);
  write_file(dir + "/data-file-info.txt", "second");

  const DataSet target;
  ASSERT_TRUE(unpack(body_of(fetch(server)), target));
  EXPECT_EQ("second", read_file(target.dir + "data-files/data-file-info.txt"));
}

TEST(SurveyServerArchive, IsAnErrorWithoutADataSet)
{
  const TestServer server({"--data", "/nowhere"});
  EXPECT_EQ(500, status_of(fetch(server)));
}

TEST(SurveyServerArchive, CanBeDamaged)
{
  const DataSet files;
  files.file("other", "bytes, served as they are");
  const TestServer server({"--archive", "damaged=truncated", "--archive", "damaged=empty",
                           "--archive", "damaged=not-bzip2", "--archive", "damaged=not-tar",
                           "--archive", "damaged=FILE:" + files.dir + "other", "--archive",
                           "damaged=FILE:/nowhere", "--archive", "ok"});
  const std::size_t whole = body_of(fetch(TestServer())).size();
  for (const char* kind : {"truncated", "empty", "not-bzip2", "not-tar"}) {
    const std::string answer = fetch(server);
    EXPECT_EQ(200, status_of(answer)) << kind;
    EXPECT_EQ("application/x-bzip2", header_of(answer, "Content-Type")) << kind;
    EXPECT_LT(body_of(answer).size(), whole) << kind;
    EXPECT_FALSE(unpack(body_of(answer), DataSet())) << kind;
  }
  EXPECT_EQ("bytes, served as they are", body_of(fetch(server)));
  EXPECT_EQ(500, status_of(fetch(server)));
  EXPECT_TRUE(unpack(body_of(fetch(server)), DataSet()));
}
