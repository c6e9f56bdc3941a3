// Tests the exact bytes of requests, and the reactions to unusual answers. The expectations are
// the same for each version of the HTTP library.
#include "server/canned-server.h"
#include "server/http.h"

#include <gtest/gtest.h>
#include <link.h>

#include <algorithm>
#include <regex>
#include <set>
#include <string>
#include <string_view>

namespace {

constexpr std::size_t plenty = 1'000'000; // bytes; more than any small answer has

const std::string ok_head = "HTTP/1.1 200 OK\r\n";

HttpAnswer answer_of(const std::string& url)
{
  const HttpSession session = open_http_session(false);
  return http_fetch(*session, url, plenty);
}

int status_of_post(const std::string& url)
{
  const HttpSession session = open_http_session(false);
  return http_post(*session, url, {"survey-file", "7", "application/xml", "<a/>"}).status();
}

// Returns the lines of a request with BOUNDARY and PORT instead of the values that differ from
// run to run, and without the header that controls the lifetime of the connection.
std::string comparable(std::string request)
{
  std::smatch boundary;
  if (std::regex_search(request, boundary, std::regex("boundary=\"?([^\"\r]+)"))) {
    const std::string text = boundary[1];
    for (auto at = request.find(text); at != std::string::npos; at = request.find(text))
      request.replace(at, text.size(), "BOUNDARY");
  }
  request = std::regex_replace(request, std::regex("127.0.0.1:[0-9]+"), "127.0.0.1:PORT");
  request = std::regex_replace(request, std::regex("Connection: Keep-Alive\r\n"), "");
  return std::regex_replace(request, std::regex("Content-Length: [0-9]+"), "Content-Length: N");
}

std::set<std::string> loaded_http_libraries()
{
  std::set<std::string> found;
  const auto look = [](dl_phdr_info* library, std::size_t, void* data) {
    const std::string path = library->dlpi_name;
    const auto name = path.find("libsoup");
    if (name != std::string::npos)
      static_cast<std::set<std::string>*>(data)->insert(path.substr(name));
    return 0;
  };
  dl_iterate_phdr(look, &found);
  return found;
}

} // namespace

TEST(HttpWire, SendsNoAdditionalHeaders)
{
  const CannedServer server(ok_head + "Content-Length: 0\r\n\r\n");
  answer_of(server.address() + "offline-data-entry/?get-version=data-files");
  EXPECT_EQ("GET /offline-data-entry/?get-version=data-files HTTP/1.1\r\n"
            "Host: 127.0.0.1:PORT\r\n\r\n",
            comparable(server.received()));
}

TEST(HttpWire, EncodesCharactersThatAnAddressCannotContain)
{
  const CannedServer server(ok_head + "Content-Length: 0\r\n\r\n");
  answer_of(server.address() + "a b/\u00e9%20?x=<>\"{}|^`&y=a b#fragment");
  EXPECT_EQ("GET /a%20b/%C3%A9%20?x=<>\"{}|^`&y=a%20b HTTP/1.1\r\nHost: 127.0.0.1:PORT\r\n\r\n",
            comparable(server.received()));
}

TEST(HttpWire, SendsEveryCharacterOfAFileName)
{
  const struct {
    const char* name;
    const char* sent;
  } cases[] = {
      {" !\"#$%&'()*+,-./:;<=>?@[\\]^_`{|}~",
       "filename=\" !\\\"#$%&'()*+,-./:;<=>?@[\\\\]^_`{|}~\""},
      {"\u00e9 !\"#$%&'()*+,-./:;<=>?@[\\]^_`{|}~",
       "filename*=UTF-8''%C3%A9%20!%22%23$%25&%27%28%29%2A+%2C-.%2F%3A%3B%3C%3D%3E%3F%40%5B%5C%5D"
       "%5E_%60%7B%7C%7D~"},
      {"not UTF-8: \xff", "filename=\"not UTF-8: \xff\""},
  };
  for (const auto& c : cases) {
    const CannedServer server("HTTP/1.1 201 Created\r\nContent-Length: 0\r\n\r\n");
    const HttpSession session = open_http_session(false);
    http_post(*session, server.address(), {"survey-file", c.name, "application/xml", "<a/>"});
    const std::string request = server.received();
    const auto start = request.find("filename");
    ASSERT_NE(std::string::npos, start);
    EXPECT_EQ(c.sent, request.substr(start, request.find('\r', start) - start));
  }
}

TEST(HttpWire, SendsAFormWithOnlyOneFile)
{
  const CannedServer server("HTTP/1.1 201 Created\r\nContent-Length: 0\r\n\r\n");
  const HttpSession session = open_http_session(false);
  http_post(*session, server.address() + "dataentry/upload-survey.php",
            {"survey-file", "Jos\u00e9 \"7\".xml", "application/xml", "<a/>"});
  const std::string request = comparable(server.received());
  const std::string body = "--BOUNDARY\r\n"
                           "Content-Disposition: form-data; name=\"survey-file\"; "
                           "filename*=UTF-8''Jos%C3%A9%20%227%22.xml\r\n"
                           "Content-Type: application/xml\r\n\r\n"
                           "<a/>\r\n--BOUNDARY--\r\n";
  EXPECT_EQ(0U, request.find("POST /dataentry/upload-survey.php HTTP/1.1\r\n")) << request;
  const auto end = request.find("\r\n\r\n") + 4;
  EXPECT_EQ(body, request.substr(end));
  std::set<std::string> headers;
  const std::regex line("\r\n([^\r]+)");
  const std::string head = request.substr(0, end);
  for (auto i = std::sregex_iterator(head.begin(), head.end(), line); i != std::sregex_iterator();
       ++i)
    headers.insert((*i)[1]);
  EXPECT_EQ((std::set<std::string>{"Host: 127.0.0.1:PORT", "Content-Length: N",
                                   "Content-Type: multipart/form-data; boundary=BOUNDARY"}),
            headers);
}

// Users see the number in messages such as "Failed to download data update! (7)". Traces contain
// it, too.
TEST(HttpWire, ReturnsOneNumberForEachKindOfFailure)
{
  const struct {
    const char* answer;
    int of_get, of_post;
  } cases[] = {
      {"", NOT_HTTP, NOT_HTTP},
      {"garbage", NOT_HTTP, NOT_HTTP},
      {"HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nabc", CONNECTION_LOST, CONNECTION_LOST},
      {"HTTP/1.1 200 OK\r\nConnection: close\r\nContent-Length: 10\r\n\r\nabc", 200, 200},
      {"HTTP/1.1 200 OK\r\nContent-Length: x\r\n\r\nabc", NOT_HTTP, NOT_HTTP},
      {"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nab", CONNECTION_LOST,
       CONNECTION_LOST},
      {"HTTP/1.1 200 OK\r\nTransfer-Encoding: odd\r\n\r\nabc", NOT_HTTP, NOT_HTTP},
      {"HTTP/1.1 100 Continue\r\n\r\n", NOT_HTTP, NOT_HTTP},
      {"HTTP/1.1 101 Switching Protocols\r\n\r\n", NOT_HTTP, NOT_HTTP},
      {"HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 201 Created\r\nContent-Length: 0\r\n\r\n", 201, 201},
      {"HTTP/1.1 302 Found\r\nContent-Length: 0\r\n\r\n", 302, 302},
      {"HTTP/1.1 302 Found\r\nLocation: nowhere:at all\r\nContent-Length: 0\r\n\r\n", NOT_HTTP,
       302},
      {"HTTP/1.1 302 Found\r\nLocation: http://127.0.0.1:1/\r\nContent-Length: 0\r\n\r\n",
       NO_CONNECTION, 302},
      {"HTTP/1.1 302 Found\r\nLocation: http://no-such-host.invalid/\r\nContent-Length: 0\r\n\r\n",
       NAME_NOT_FOUND, 302},
      {"HTTP/1.1 302 Found\r\nLocation: /\r\nContent-Length: 0\r\n\r\n", TOO_MANY_REDIRECTS, 302},
      {"HTTP/1.1 401 No\r\nWWW-Authenticate: Basic realm=\"a\"\r\nContent-Length: 0\r\n\r\n", 401,
       401},
      {"HTTP/1.1 1000 No\r\nContent-Length: 0\r\n\r\n", NOT_HTTP, NOT_HTTP},
      {"HTTP/3.7 200 No\r\nContent-Length: 0\r\n\r\n", NOT_HTTP, NOT_HTTP},
  };
  for (const auto& c : cases) {
    const CannedServer server(c.answer);
    EXPECT_EQ(c.of_get, answer_of(server.address()).status()) << c.answer;
    EXPECT_EQ(c.of_post, status_of_post(server.address())) << c.answer;
  }
}

TEST(HttpWire, ReturnsOneNumberForEachKindOfUnusableAddress)
{
  const struct {
    const char* url;
    int status;
  } cases[] = {
      {"http://127.0.0.1:1/", NO_CONNECTION},
      {"http://[::1]:1/", NO_CONNECTION},
      {"HTTP://127.0.0.1:1", NO_CONNECTION},
      {" http://127.0.0.1:1/a b?c d#e f ", NO_CONNECTION},
      {"http://no-such-host.invalid/", NAME_NOT_FOUND},
      {"http://ex\xc3\xa4mple.invalid/", NAME_NOT_FOUND},
      {"", NOT_HTTP},
      {"nowhere", NOT_HTTP},
      {"/dataentry", NOT_HTTP},
      {"http://", NOT_HTTP},
      {"http:///dataentry", NOT_HTTP},
      {"http://[::1", NOT_HTTP},
      {"http://127.0.0.1:x/", NOT_HTTP},
      {"http://127.0.0.1:1/%zz", NOT_HTTP},
      {"http://127.0.0.1:99999/", NOT_HTTP},
      {"http://\xff/", NOT_HTTP},
      {"ftp://127.0.0.1/", NOT_HTTP},
      {"file:///dev/null", NOT_HTTP},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.status, answer_of(c.url).status()) << c.url;
    EXPECT_EQ(c.status, status_of_post(c.url)) << c.url;
  }
}

TEST(HttpWire, ReportsNoSecureConnectionIfTheServerHasNone)
{
  const CannedServer server("garbage");
  std::string url = server.address();
  url.insert(std::string_view("http").size(), "s");
  EXPECT_EQ(NO_SECURE_CONNECTION, answer_of(url).status());
  EXPECT_EQ(NO_SECURE_CONNECTION, status_of_post(url));
}

TEST(HttpWire, ReturnsTheBodyUnchanged)
{
  const struct {
    const char* headers_and_body;
    const char* body;
  } cases[] = {
      {"Content-Length: 2\r\n\r\nabc", "ab"},
      {"\r\nabc", "abc"},
      {"Transfer-Encoding: chunked\r\n\r\n3\r\nabc\r\n2\r\nde\r\n0\r\n\r\n", "abcde"},
      {"Content-Encoding: gzip\r\nContent-Length: 3\r\n\r\nabc", "abc"},
  };
  for (const auto& c : cases) {
    const CannedServer server(ok_head + c.headers_and_body);
    const HttpAnswer answer = answer_of(server.address());
    EXPECT_EQ(c.body, answer.body());
    EXPECT_TRUE(answer.is_whole()) << c.headers_and_body;
  }
}

TEST(HttpWire, ReturnsTheLastOfSeveralHeadersWithTheSameName)
{
  const CannedServer server(ok_head + "X-A: 1\r\nx-a: 2\r\nContent-Length: 0\r\n\r\n");
  EXPECT_STREQ("2", answer_of(server.address()).header("X-A"));
}

TEST(HttpWire, ClosesTheConnectionBeyondTheLimit)
{
  constexpr std::size_t size = std::size_t{64} << 20;
  const CannedServer server(ok_head + "Content-Length: " + std::to_string(size) + "\r\n\r\n" +
                            std::string(size, 'x'));
  {
    const HttpSession session = open_http_session(false);
    EXPECT_FALSE(http_fetch(*session, server.address(), plenty).is_whole());
    EXPECT_FALSE(http_get(*session, server.address()).is_whole());
  }
  EXPECT_GT(size, server.sent());
}

TEST(HttpWire, LoadsOnlyOneVersionOfItsLibrary)
{
  EXPECT_EQ(1U, loaded_http_libraries().size()) << testing::PrintToString(loaded_http_libraries());
}
