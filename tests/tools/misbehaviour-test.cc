#include "support/test-server.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "tools/raw-exchange.h"

namespace {

const char* const version = "X-Current-App-Version-Is";

// Returns the server's answer to the query for the program's version.
std::string ask(const TestServer& server)
{
  return send_request(server.port, get_request("/offline-data-entry/?get-version=mac"));
}

std::string ask_one_that(const std::string& spec)
{
  return ask(TestServer({"--app-query", spec}));
}

double seconds_to_ask(const TestServer& server, std::string& answer)
{
  const auto start = std::chrono::steady_clock::now();
  answer = ask(server);
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

} // namespace

TEST(SurveyServerMisbehaviour, FollowsTheListAndStaysAtTheLastEntry)
{
  const TestServer server({"--app-query", "status=500", "--app-query", "ok", "--app-query",
                           "status=404", "--data-query", "status=403"});
  for (const int expected : {500, 200, 404, 404})
    EXPECT_EQ(expected, status_of(ask(server)));
  EXPECT_EQ(201, status_of(send_upload(server)));
}

TEST(SurveyServerMisbehaviour, ChangesOnlyTheGivenParts)
{
  const struct {
    const char* spec;
    int status;
    const char* header;
    const char* value;
  } cases[] = {
      {"status=500", 500, version, "1.2.3"},
      {"status=101", 101, version, "1.2.3"},
      {"without=x-current-app-version-is", 200, version, "(none)"},
      {"without=Content-Type", 200, "Content-Type", "(none)"},
      {"header=X-Other:a%2C b: %3Cc%3E & %26", 200, "X-Other", "a, b: <c> & &"},
      {"header=X-Other:100%", 200, "X-Other", "100%"},
      {"error=Too%20late%2C sorry,status=410", 410, "X-Survey-Upload-Error", "Too late, sorry"},
      {"type=text/html", 200, "Content-Type", "text/html"},
      {"redirect=/elsewhere", 302, "Location", "/elsewhere"},
      {"redirect=/elsewhere,status=307", 307, "Location", "/elsewhere"},
      {"long-header=5", 200, "X-Long", "xxxxx"},
      {"ok", 200, version, "1.2.3"},
  };
  for (const auto& c : cases) {
    const TestServer server({"--app-version", "1.2.3", "--app-query", c.spec});
    const std::string answer = ask(server);
    EXPECT_EQ(c.status, status_of(answer)) << c.spec;
    EXPECT_EQ(c.value, header_of(answer, c.header)) << c.spec;
  }
}

TEST(SurveyServerMisbehaviour, SendsHeadersOfAnyLength)
{
  EXPECT_EQ(std::string(200000, 'x'), header_of(ask_one_that("long-header=200000"), "X-Long"));
}

TEST(SurveyServerMisbehaviour, SendsHeadersThatBreakTheLine)
{
  EXPECT_EQ("b", header_of(ask_one_that("header=X-One:a%0D%0AX-Two: b"), "X-Two"));
}

TEST(SurveyServerMisbehaviour, ClosesBeforeTheAnswer)
{
  EXPECT_EQ("", ask_one_that("close=before"));
}

TEST(SurveyServerMisbehaviour, ClosesInTheMiddleOfTheBody)
{
  const std::string answer = ask_one_that("close=middle");
  EXPECT_EQ(200, status_of(answer));
  EXPECT_FALSE(body_of(answer).empty());
  EXPECT_GT(std::stoul(header_of(answer, "Content-Length")), body_of(answer).size());
}

TEST(SurveyServerMisbehaviour, SendsBytesThatAreNotHttp)
{
  const std::string answer = ask_one_that("garbage");
  EXPECT_FALSE(answer.empty());
  EXPECT_EQ(std::string::npos, answer.find("HTTP"));
}

TEST(SurveyServerMisbehaviour, LetsTheClientWait)
{
  std::string answer;
  EXPECT_GE(seconds_to_ask(TestServer({"--app-query", "delay=200"}), answer), 0.19);
  EXPECT_EQ(200, status_of(answer));
}

TEST(SurveyServerMisbehaviour, SendsTheSameAnswerSlowly)
{
  std::string answer;
  EXPECT_GE(seconds_to_ask(TestServer({"--app-query", "trickle"}), answer), 0.5);
  EXPECT_EQ(200, status_of(answer));
  EXPECT_EQ(std::stoul(header_of(answer, "Content-Length")), body_of(answer).size());
}

TEST(SurveyServerMisbehaviour, KeepsASurveyThatItAcceptsBeforeTheConnectionFails)
{
  const struct {
    const char* spec;
    bool is_kept;
  } cases[] = {
      {"close=before", true}, {"close=middle", true}, {"garbage", true},
      {"trickle", true},      {"status=200", true},   {"without=X-Survey-Upload-Successful", true},
      {"status=500", false},  {"status=404", false},  {"redirect=/elsewhere", false},
      {"status=302", false},  {"status=100", false},
  };
  for (const auto& c : cases) {
    const TestServer server({"--upload", c.spec});
    send_upload(server);
    EXPECT_EQ(c.is_kept, file_exists(server.uploads + "a.MAVO-Survey")) << c.spec;
  }
}

TEST(SurveyServerMisbehaviour, LogsHowARequestEnded)
{
  const TestServer server({"--upload", "close=before", "--upload", "garbage", "--upload",
                           "close=middle", "--upload", "status=503"});
  for (int time = 0; time < 4; ++time)
    send_upload(server);
  const std::string request = "POST /dataentry/upload-survey.php ";
  const std::vector<std::string> expected = {request + "closed", request + "garbage",
                                             request + "201", request + "503"};
  EXPECT_EQ(expected, server.log());
}

TEST(SurveyServerMisbehaviour, DoesNotPreventTheServerFromEnding)
{
  TestServer server({"--app-query", "delay=60000"});
  const RawClient client(server.port, get_request("/offline-data-entry/?get-version=mac"));
  while (server.log().empty())
    std::this_thread::yield(); // waits for the start of the answer
  server.stop();
}
