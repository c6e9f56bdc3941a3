#include "server/http.h"
#include "support/data-set.h"
#include "support/memory.h"
#include "support/output.h"
#include "support/test-server.h"

#include <gtest/gtest.h>

namespace {

using Names = std::vector<std::string>;

const char* const question_path = "/offline-data-entry/?get-version=mac";
constexpr std::size_t plenty = 1'000'000; // bytes; more than any answer of the server has
const char* const upload_path = "/dataentry/upload-survey.php";

FormFile survey_named(const std::string& name, const std::string& comment = "")
{
  return {"survey-file", name, "application/xml",
          "<!--" + comment + "--><MAVO-Survey version='1.0'><survey/></MAVO-Survey>"};
}

int status_of_get(const std::string& url)
{
  const HttpSession session = open_http_session(false);
  return http_get(*session, url).status();
}

int status_of_post(const std::string& url)
{
  const HttpSession session = open_http_session(false);
  return http_post(*session, url, survey_named("7")).status();
}

} // namespace

TEST(Http, ReturnsStatusHeadersAndBody)
{
  const TestServer server({"--app-query", "header=X-Empty:"});
  const HttpSession session = open_http_session(false);
  const HttpAnswer answer = http_fetch(*session, server.address() + question_path, plenty);
  EXPECT_EQ(200, answer.status());
  EXPECT_TRUE(answer.is_whole());
  EXPECT_STREQ("text/plain; charset=utf-8", answer.header("content-type"));
  EXPECT_STREQ("", answer.header("X-Empty"));
  EXPECT_EQ(nullptr, answer.header("X-Absent"));
  ASSERT_NE(nullptr, answer.header("X-Current-App-Version-Is"));
  EXPECT_EQ(std::string(answer.header("X-Current-App-Version-Is")) + "\n", answer.body());
}

TEST(Http, ReturnsABodyThatIsNotText)
{
  const TestServer server;
  const HttpSession session = open_http_session(false);
  const std::string path = "/offline-data-entry/current-offline-data.tar.bz2";
  const HttpAnswer answer = http_fetch(*session, server.address() + path, plenty);
  EXPECT_EQ(200, answer.status());
  EXPECT_EQ("BZh", answer.body().substr(0, 3));
  EXPECT_NE(std::string_view::npos, answer.body().find('\0'));
  EXPECT_STREQ(std::to_string(answer.body().size()).c_str(), answer.header("Content-Length"));
}

TEST(Http, KeepsAnAnswerThatIsMoved)
{
  const TestServer server;
  const HttpSession session = open_http_session(false);
  HttpAnswer first = http_fetch(*session, server.address() + question_path, plenty);
  const HttpAnswer answer = std::move(first);
  EXPECT_EQ(200, answer.status());
  EXPECT_NE("", answer.body());
}

TEST(Http, DiscardsAnUnneededBody)
{
  const DataSet large;
  large.file("body", std::string(64 << 20, 'x'));
  const TestServer server({"--archive", "damaged=FILE:" + large.dir + "body"});
  const HttpSession session = open_http_session(false);
  const long before = memory_peak_kb();
  const HttpAnswer answer =
      http_get(*session, server.address() + "/offline-data-entry/current-offline-data.tar.bz2");
  EXPECT_EQ(200, answer.status());
  EXPECT_STREQ("application/x-bzip2", answer.header("Content-Type"));
  EXPECT_EQ("", answer.body());
  EXPECT_GT(before + 16L * 1024, memory_peak_kb());
  EXPECT_EQ(200, http_get(*session, server.address() + question_path).status())
      << "the next request";
  EXPECT_EQ("", http_post(*session, server.address() + upload_path, survey_named("7")).body());
}

TEST(Http, ReceivesABodyOnlyUpToItsLimit)
{
  const TestServer server;
  const HttpSession session = open_http_session(false);
  const std::string url = server.address() + "/offline-data-entry/current-offline-data.tar.bz2";
  const std::size_t size = http_fetch(*session, url, plenty).body().size();
  EXPECT_TRUE(http_fetch(*session, url, size).is_whole());
  const HttpAnswer answer = http_fetch(*session, url, size - 1);
  EXPECT_EQ(200, answer.status());
  EXPECT_FALSE(answer.is_whole());
}

TEST(Http, SendsAFormWithTheFile)
{
  const TestServer server;
  const HttpSession session = open_http_session(false);
  const FormFile file = survey_named("Jos\u00e9 7", std::string(200000, 'x'));
  const HttpAnswer answer = http_post(*session, server.address() + upload_path, file);
  EXPECT_EQ(201, answer.status());
  EXPECT_EQ(file.contents, read_file(server.uploads + "Jos\u00e9 7"));
}

TEST(Http, SendsFilesWithUnusualNames)
{
  const struct {
    const char* name;
    const char* sent;
  } cases[] = {
      {"a\"b\\c", R"(filename="a\"b\\c")"},
      {"a;b/c", R"(filename="a;b/c")"},
      {"a\r\nX-Evil: 1", R"(filename="a%0D%0AX-Evil: 1")"},
      {"", R"(filename="")"},
      {"not UTF-8: \xff\xfe", "filename"},
  };
  const TestServer server({"--upload", "status=500"});
  int request = 0;
  for (const auto& c : cases) {
    const HttpSession session = open_http_session(false);
    const FormFile file = survey_named(c.name);
    EXPECT_EQ(500, http_post(*session, server.address() + upload_path, file).status()) << c.name;
    const std::string sent = read_file(server.requests + std::to_string(++request) + "-upload.txt");
    EXPECT_NE(std::string::npos, sent.find(c.sent)) << sent;
    EXPECT_NE(std::string::npos, sent.find("\r\n\r\n" + file.contents + "\r\n--")) << sent;
  }
}

TEST(Http, ReturnsAStatusBelow100IfThereIsNoAnswer)
{
  for (const char* spec : {"close=before", "garbage", "status=100", "long-header=3000000"}) {
    const TestServer server({"--app-query", spec, "--upload", spec});
    EXPECT_GT(100, status_of_get(server.address() + question_path)) << spec;
    EXPECT_GT(100, status_of_post(server.address() + upload_path)) << spec;
  }
  TestServer gone;
  gone.stop();
  EXPECT_GT(100, status_of_get(gone.address()));
  EXPECT_GT(100, status_of_post(gone.address()));
}

TEST(Http, ReturnsNoAnswerForAnInvalidAddress)
{
  const HttpSession session = open_http_session(false);
  for (const char* url :
       {"", "nowhere", "http://", "http:///", "ftp://127.0.0.1/", "http://[::1"}) {
    const HttpAnswer answer = http_fetch(*session, url, plenty);
    EXPECT_GT(100, answer.status()) << url;
    EXPECT_EQ(nullptr, answer.header("Content-Type")) << url;
    EXPECT_EQ("", answer.body()) << url;
    EXPECT_GT(100, status_of_post(url)) << url;
  }
}

TEST(Http, ReturnsTheReceivedPartOfATruncatedBody)
{
  const TestServer server({"--app-query", "close=middle"});
  const HttpSession session = open_http_session(false);
  const HttpAnswer answer = http_fetch(*session, server.address() + question_path, plenty);
  EXPECT_EQ(200, answer.status());
  EXPECT_NE("", answer.body());
  EXPECT_FALSE(answer.is_whole());
}

TEST(Http, FollowsRedirectsOfGetButNotOfPost)
{
  const TestServer target;
  const std::string redirect = "redirect=" + target.address() + question_path;
  const TestServer server({"--app-query", redirect, "--upload", redirect});
  EXPECT_EQ(200, status_of_get(server.address() + question_path));
  EXPECT_EQ(302, status_of_post(server.address() + upload_path));
  EXPECT_EQ(1U, target.log().size());
}

TEST(Http, EndsALoopOfRedirects)
{
  const TestServer server({"--app-query", std::string("redirect=") + question_path});
  EXPECT_GT(100, status_of_get(server.address() + question_path));
  EXPECT_LT(server.log().size(), 100U);
}

TEST(Http, LogsRequestsAndAnswersIfRequested)
{
  const TestServer server;
  const auto ask = [&server](bool log_bodies) {
    const HttpSession session = open_http_session(log_bodies);
    http_post(*session, server.address() + upload_path, survey_named("7", "a dive"));
  };
  EXPECT_EQ("", output_of([&] { ask(false); }));
  const std::string said = output_of([&] { ask(true); });
  for (const char* line : {"> POST ", "<!--a dive-->", "< HTTP/1.1 201 Created", "< Kept as 7."})
    EXPECT_NE(std::string::npos, said.find(line)) << line;
}

TEST(Http, ReleasesTheMemoryOfRequests)
{
  const TestServer server({"--upload", "ok", "--upload", "status=500"});
  const FormFile file = survey_named("7", std::string(100000, 'x'));
  const auto ask = [&] {
    const HttpSession session = open_http_session(false);
    EXPECT_LT(100, http_post(*session, server.address() + upload_path, file).status());
    EXPECT_LT(100, http_get(*session, server.address() + question_path).status());
    EXPECT_GT(100, http_get(*session, "no address").status());
  };
  for (int i = 0; i < 50; ++i)
    ask();
  const long before = memory_now_kb();
  for (int i = 0; i < 150; ++i)
    ask();
  EXPECT_GT(before + 4096 + memory_kept_back_kb, memory_now_kb());
}
