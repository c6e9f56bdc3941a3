#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// The exchange with a server. The interface is the same for all versions of the HTTP library.
// All calls block until the exchange is complete. There is no time limit, and a call cannot be
// cancelled. core/blocking-call.h describes what the user sees in the meantime.

using SoupSession = struct _SoupSession; // NOLINT(bugprone-reserved-identifier): the library's

// The status codes of success: RFC 9110, 15.3.
constexpr int status_ok = 200;
constexpr int status_created = 201;

// Closes all connections of a session and frees it.
struct HttpSessionClose {
  void operator()(SoupSession* session) const;
};
// Owns a session, which keeps connections open between requests.
using HttpSession = std::unique_ptr<SoupSession, HttpSessionClose>;

// Returns a new session. If `log_bodies`, it prints all requests and answers to standard output.
HttpSession open_http_session(bool log_bodies);

// The reasons why there is no answer; they replace the status. The numbers are those of
// libsoup 2.4, because messages and traces contain them.
enum HttpFailure {
  NAME_NOT_FOUND = 2,
  NO_CONNECTION = 4,
  NO_SECURE_CONNECTION = 6,
  CONNECTION_LOST = 7,
  NOT_HTTP = 8, // the address or the answer is not valid
  TOO_MANY_REDIRECTS = 10
};

// The result of one request.
class HttpAnswer
{
public:
  // The data from the library. The member functions describe them.
  struct Received {
    int status = 0;
    bool is_whole = false;
    std::vector<std::pair<std::string, std::string>> headers; // name, value
    std::string body;
  };
  explicit HttpAnswer(Received all);

  // Returns the HTTP status, or one of HttpFailure if there was no answer. The body can be
  // incomplete even if the status means success.
  int status() const { return received.status; }
  // Returns whether the body has the size that the server announced and does not exceed the limit
  // of http_fetch().
  bool is_whole() const { return received.is_whole; }
  // Returns the value of the last header with that name, or null if there is none. Ignores the
  // case of the name. This object owns the text.
  const char* header(const char* name) const;
  // Returns the received bytes of the body. It is empty after http_get() and http_post(). This
  // object owns the bytes.
  std::string_view body() const { return received.body; }

private:
  Received received;
};

// Sends a GET request and follows redirects. The answer has only status and headers. Closes the
// connection if the body exceeds 1 MiB.
HttpAnswer http_get(SoupSession& session, const std::string& url);
// Sends a GET request and follows redirects. The answer includes the body. If the body exceeds
// `limit` bytes, closes the connection, and the answer is not complete (is_whole()).
HttpAnswer http_fetch(SoupSession& session, const std::string& url, std::size_t limit);

// A file for a form, as a browser would send it.
struct FormFile {
  std::string control_name;
  std::string file_name;
  std::string content_type;
  std::string contents;
};
// Sends a POST request with a form that has one file. Does not follow redirects. The answer has
// only status and headers, as with http_get().
HttpAnswer http_post(SoupSession& session, const std::string& url, const FormFile& file);
