// The synchronous session is what this program is written for; the library has
// marked it as old since, without a reason to leave it.
#define SOUP_VERSION_MIN_REQUIRED SOUP_VERSION_2_42

#include "server/http.h"

#include "core/blocking-call.h"

#include <libsoup/soup.h>

#include <algorithm>

namespace {

struct Unref {
  void operator()(void* object) const { g_object_unref(object); }
};
struct UriFree {
  void operator()(SoupURI* uri) const { soup_uri_free(uri); }
};
struct MultipartFree {
  void operator()(SoupMultipart* multipart) const { soup_multipart_free(multipart); }
};
struct BufferFree {
  void operator()(SoupBuffer* buffer) const { soup_buffer_free(buffer); }
};

// What the library itself says of an address that cannot be asked.
constexpr int not_an_address = SOUP_STATUS_MALFORMED;

bool is_http_address(const std::string& url)
{
  const std::unique_ptr<SoupURI, UriFree> uri(soup_uri_new(url.c_str()));
  return SOUP_URI_VALID_FOR_HTTP(uri.get());
}

// The name with line breaks as browsers write them; the library takes none.
std::string sendable(const std::string& file_name)
{
  std::string name;
  for (const char c : file_name) {
    if (c == '\r' || c == '\n')
      name += c == '\r' ? "%0D" : "%0A";
    else
      name += c;
  }
  return name;
}

// How much of a body that nobody needs is received all the same.
constexpr std::size_t most_of_unneeded_body = std::size_t{1} << 20;

// The body of an answer while it is being received.
struct BodyLimit {
  SoupSession& session;
  std::size_t bytes_left;
  bool is_exceeded = false;
  guint status = 0; // of the answer, if the limit is exceeded
};

void on_got_chunk(SoupMessage* message, SoupBuffer* chunk, gpointer data)
{
  BodyLimit& limit = *static_cast<BodyLimit*>(data);
  if (limit.is_exceeded)
    return;
  limit.is_exceeded = chunk->length > limit.bytes_left;
  limit.bytes_left -= std::min(limit.bytes_left, chunk->length);
  if (!limit.is_exceeded)
    return;
  limit.status = message->status_code;
  soup_session_cancel_message(&limit.session, message, SOUP_STATUS_CANCELLED);
}

HttpAnswer send(SoupSession& session, SoupMessage* message, std::size_t body_limit)
{
  BodyLimit limit{session, body_limit};
  const gulong handler = g_signal_connect(message, "got-chunk", G_CALLBACK(on_got_chunk), &limit);
  const BlockingCall call;
  soup_session_send_message(&session, message);
  g_signal_handler_disconnect(message, handler);
  if (limit.is_exceeded) // the library has put the reason for the end in its place
    soup_message_set_status(message, limit.status);
  return HttpAnswer(message, limit.is_exceeded);
}

HttpAnswer send_without_body(SoupSession& session, SoupMessage* message)
{
  const bool is_logged = soup_session_has_feature(&session, SOUP_TYPE_LOGGER) != FALSE;
  soup_message_body_set_accumulate(message->response_body, is_logged);
  return send(session, message, most_of_unneeded_body);
}

} // namespace

void HttpSessionClose::operator()(SoupSession* session) const
{
  g_object_unref(session);
}

HttpSession open_http_session(bool log_bodies)
{
  HttpSession session(soup_session_sync_new());
  if (log_bodies) {
    const std::unique_ptr<SoupLogger, Unref> logger(soup_logger_new(SOUP_LOGGER_LOG_BODY, -1));
    soup_session_add_feature(session.get(), SOUP_SESSION_FEATURE(logger.get()));
  }
  return session;
}

void HttpAnswer::Release::operator()(SoupMessage* sent) const
{
  g_object_unref(sent);
}

HttpAnswer::HttpAnswer(SoupMessage* sent, bool is_cut) : message(sent), cut(is_cut)
{
  // From here on the body keeps its bytes in one piece.
  if (message && soup_message_body_get_accumulate(message->response_body))
    soup_buffer_free(soup_message_body_flatten(message->response_body));
}

HttpAnswer::~HttpAnswer() = default;
HttpAnswer::HttpAnswer(HttpAnswer&&) noexcept = default;

int HttpAnswer::status() const
{
  return message ? static_cast<int>(message->status_code) : not_an_address;
}

bool HttpAnswer::is_whole() const
{
  if (!message || cut)
    return false;
  SoupMessageHeaders* const headers = message->response_headers;
  return soup_message_headers_get_encoding(headers) != SOUP_ENCODING_CONTENT_LENGTH ||
         message->response_body->length >= soup_message_headers_get_content_length(headers);
}

const char* HttpAnswer::header(const char* name) const
{
  return message ? soup_message_headers_get_one(message->response_headers, name) : nullptr;
}

std::string_view HttpAnswer::body() const
{
  if (!message)
    return {};
  const SoupMessageBody& body = *message->response_body;
  return {body.data, static_cast<std::size_t>(body.length)};
}

HttpAnswer http_get(SoupSession& session, const std::string& url)
{
  if (!is_http_address(url))
    return HttpAnswer(nullptr);
  return send_without_body(session, soup_message_new(SOUP_METHOD_GET, url.c_str()));
}

HttpAnswer http_fetch(SoupSession& session, const std::string& url, std::size_t limit)
{
  if (!is_http_address(url))
    return HttpAnswer(nullptr);
  return send(session, soup_message_new(SOUP_METHOD_GET, url.c_str()), limit);
}

HttpAnswer http_post(SoupSession& session, const std::string& url, const FormFile& file)
{
  if (!is_http_address(url))
    return HttpAnswer(nullptr);
  const std::unique_ptr<SoupBuffer, BufferFree> buffer(
      soup_buffer_new(SOUP_MEMORY_COPY, file.contents.data(), file.contents.size()));
  const std::unique_ptr<SoupMultipart, MultipartFree> multipart(
      soup_multipart_new(SOUP_FORM_MIME_TYPE_MULTIPART));
  soup_multipart_append_form_file(multipart.get(), file.control_name.c_str(),
                                  sendable(file.file_name).c_str(), file.content_type.c_str(),
                                  buffer.get());
  SoupMessage* const message = soup_form_request_new_from_multipart(url.c_str(), multipart.get());
  // Who is redirected would ask the new address without the file.
  soup_message_set_flags(message, SOUP_MESSAGE_NO_REDIRECT);
  return send_without_body(session, message);
}
