#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// The exchange with a server, whichever version of the HTTP library the program is built
// with. All calls block until the exchange is over; there is no time limit and no way to
// cancel. See core/blocking-call.h for what the user sees meanwhile.

using SoupSession = struct _SoupSession; // NOLINT(bugprone-reserved-identifier): the library's

// The answers that mean success: RFC 9110, 15.3.
constexpr int status_ok = 200;
constexpr int status_created = 201;

struct HttpSessionClose {
  void operator()(SoupSession* session) const;
};
// Keeps connections open from one request to the next.
using HttpSession = std::unique_ptr<SoupSession, HttpSessionClose>;

// With `log_bodies` all that is sent and received goes to standard output.
HttpSession open_http_session(bool log_bodies);

// Why there was no answer, in place of a status. Users and traces see the numbers: they are
// those of libsoup 2.4.
enum HttpFailure {
  NAME_NOT_FOUND = 2,
  NO_CONNECTION = 4,
  NO_SECURE_CONNECTION = 6,
  CONNECTION_LOST = 7,
  NOT_HTTP = 8, // the address or the answer
  TOO_MANY_REDIRECTS = 10
};

// What came of one request.
class HttpAnswer
{
public:
  // What the library received; the members below describe it.
  struct Received {
    int status = 0;
    bool is_whole = false;
    std::vector<std::pair<std::string, std::string>> headers; // name, value
    std::string body;
  };
  explicit HttpAnswer(Received all);

  // The HTTP status, or one of HttpFailure if none came. The body may still have been
  // cut off.
  int status() const { return received.status; }
  // Whether as much of the body came as the server had announced, and no more than
  // the limit of http_fetch().
  bool is_whole() const { return received.is_whole; }
  // The value of a header of the answer, null if it is absent; of several with that name,
  // the last one. Valid as long as this object.
  const char* header(const char* name) const;
  // All bytes of the body that were kept; valid as long as this object.
  std::string_view body() const { return received.body; }

private:
  Received received;
};

// Only status and headers of the answer count. Its body is not kept, and the connection
// is closed if it goes on beyond a megabyte.
HttpAnswer http_get(SoupSession& session, const std::string& url);
// The same with the body. The connection is closed once that exceeds `limit` bytes; the
// answer is not whole then.
HttpAnswer http_fetch(SoupSession& session, const std::string& url, std::size_t limit);

// A file as a browser's form sends it.
struct FormFile {
  std::string control_name;
  std::string file_name;
  std::string content_type;
  std::string contents;
};
// Sends it once and to this address only: a redirect is an answer like any other.
// Of the answer, what http_get() gives.
HttpAnswer http_post(SoupSession& session, const std::string& url, const FormFile& file);
