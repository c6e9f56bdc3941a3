#include "core/version.h"
#include "support/test-server.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <filesystem>

#include "tools/raw-exchange.h"

namespace {

std::string ask(const TestServer& server, const std::string& version_of)
{
  return send_request(server.port, get_request("/offline-data-entry/?get-version=" + version_of));
}

} // namespace

TEST(SurveyServerVersions, OffersTheProgramOfItsBuildByDefault)
{
  const TestServer server;
  const std::string answer = ask(server, "mac");
  EXPECT_EQ(200, status_of(answer));
  EXPECT_EQ(BuildInfo::version_str, header_of(answer, "X-Current-App-Version-Is"));
  EXPECT_NE("(none)", header_of(answer, "X-Download-App-From"));

  const TestServer other({"--app-version", "9.1.2", "--app-url", "http://a.example/get?a&b"});
  const std::string other_answer = ask(other, "mac");
  EXPECT_EQ("9.1.2", header_of(other_answer, "X-Current-App-Version-Is"));
  EXPECT_EQ("http://a.example/get?a&b", header_of(other_answer, "X-Download-App-From"));
}

TEST(SurveyServerVersions, ReadsTheDataSetForEachRequest)
{
  const TestServer server;
  const std::string first = ask(server, "data-files");
  EXPECT_EQ("20210101000000", header_of(first, "X-Current-Data-Version-Is"));
  EXPECT_EQ("January 1, 2021", header_of(first, "X-Data-Last-Updated-Is"));
  EXPECT_EQ(server.address() + "/offline-data-entry/current-offline-data.tar.bz2",
            header_of(first, "X-Download-Data-Files-From"));

  write_file(server.data + "data-file-info.txt", "version=1\ntimestamp=a=b\nupdated=Soon\n");
  const std::string second = ask(server, "data-files");
  EXPECT_EQ("a=b", header_of(second, "X-Current-Data-Version-Is"));
  EXPECT_EQ("Soon", header_of(second, "X-Data-Last-Updated-Is"));
}

TEST(SurveyServerVersions, ReportsAnErrorForADataSetWithoutAVersion)
{
  const TestServer server;
  const char* const unusable[] = {"", "timestamp=1\n", "updated=now\n",
                                  "timestamp=1\r\nupdated=a\n", "timestamp 1\nupdated now\n"};
  for (const char* text : unusable) {
    write_file(server.data + "data-file-info.txt", text);
    EXPECT_EQ(500, status_of(ask(server, "data-files"))) << text;
  }
  std::filesystem::remove(server.data + "data-file-info.txt");
  EXPECT_EQ(500, status_of(ask(server, "data-files")));
}

TEST(SurveyServerVersions, AnswersOnlyForItsPlatform)
{
  const TestServer server({"--platform", "linux"});
  EXPECT_EQ(200, status_of(ask(server, "linux")));
  EXPECT_EQ(404, status_of(ask(server, "mac")));
}

TEST(SurveyServerVersions, RefusesAllOtherRequests)
{
  const TestServer server;
  const struct {
    int status;
    std::string request;
  } cases[] = {
      {404, get_request("/offline-data-entry/")},
      {404, get_request("/offline-data-entry/?get-version=")},
      {404, get_request("/offline-data-entry/?other=mac")},
      {404, get_request("/?get-version=mac")},
      {404, get_request("/")},
      {405, "POST /offline-data-entry/?get-version=mac HTTP/1.1\r\nHost: a\r\n"
            "Connection: close\r\nContent-Length: 0\r\n\r\n"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(c.status, status_of(send_request(server.port, c.request))) << c.request;
}

TEST(SurveyServerVersions, ListensOnlyOnLoopback)
{
  const TestServer server;
  sockaddr_in other{};
  other.sin_family = AF_INET;
  other.sin_port = htons(static_cast<uint16_t>(server.port));
  inet_pton(AF_INET, "127.0.0.2", &other.sin_addr); // reaches a server on all addresses
  const int descriptor = socket(AF_INET, SOCK_STREAM, 0);
  EXPECT_NE(0, connect(descriptor, reinterpret_cast<sockaddr*>(&other), sizeof other));
  close(descriptor);
}
