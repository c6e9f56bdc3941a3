#include "support/test-server.h"

#include <gtest/gtest.h>

#include "tools/raw-exchange.h"

namespace {

std::string get(const TestServer& server, const std::string& target)
{
  return send_request(server.port, get_request(target));
}

} // namespace

TEST(TestServer, ReportsEachRequestThatItAnswered)
{
  const TestServer server;
  EXPECT_EQ(std::vector<std::string>{}, server.log());
  EXPECT_EQ(200, status_of(get(server, "/offline-data-entry/?get-version=data-files")));
  EXPECT_EQ(404, status_of(get(server, "/other")));
  const std::vector<std::string> expected = {"GET /offline-data-entry/?get-version=data-files 200",
                                             "GET /other 404"};
  EXPECT_EQ(expected, server.log());
  EXPECT_TRUE(file_exists(server.requests + "1-data-query.txt"));
}

TEST(TestServer, GivesEachServerSeparateDirectories)
{
  const TestServer first;
  const TestServer second;
  send_upload(first);
  EXPECT_TRUE(file_exists(first.uploads + "a.MAVO-Survey"));
  EXPECT_FALSE(file_exists(second.uploads + "a.MAVO-Survey"));
  EXPECT_TRUE(file_exists(second.data + "region-info.csv"));
  EXPECT_NE(first.address(), second.address());
}

TEST(TestServer, RemovesItsDirectories)
{
  std::string dir;
  {
    const TestServer server;
    dir = server.scratch.dir;
    EXPECT_TRUE(file_exists(dir));
  }
  EXPECT_FALSE(file_exists(dir));
}
