#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

// The one place that knows the HTTP library: another version or library can be
// put in its place in http.cc. All calls block until the exchange is over; there
// is no time limit and no way to cancel. See core/blocking-call.h for what the user
// sees meanwhile.

using SoupMessage = struct _SoupMessage; // NOLINT(bugprone-reserved-identifier): the library's
using SoupSession = struct _SoupSession; // NOLINT(bugprone-reserved-identifier)

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

// What came of one request.
class HttpAnswer
{
public:
  // Takes over the message, which has been sent; null for an address that is none.
  // `is_cut`: the body was longer than the limit of http_fetch().
  explicit HttpAnswer(SoupMessage* sent, bool is_cut = false);
  ~HttpAnswer();
  HttpAnswer(HttpAnswer&& other) noexcept;
  HttpAnswer& operator=(HttpAnswer&&) = delete;

  // The HTTP status, or one below 100 if none came. The body may still have been
  // cut off.
  int status() const;
  // Whether as much of the body came as the server had announced, and no more than
  // the limit of http_fetch().
  bool is_whole() const;
  // The value of a header of the answer, null if it is absent; valid as long as
  // this object.
  const char* header(const char* name) const;
  // All bytes of the body that were kept; valid as long as this object.
  std::string_view body() const;

private:
  struct Release {
    void operator()(SoupMessage* sent) const;
  };
  std::unique_ptr<SoupMessage, Release> message;
  bool cut = false;
};

// Only status and headers of the answer count. Its body is not kept, unless the session
// logs it, and the connection is closed if it goes on beyond a megabyte.
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
