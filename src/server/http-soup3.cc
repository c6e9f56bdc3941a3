#include "core/blocking-call.h"
#include "core/c-resource.h"
#include "server/http-library.h"

#include <libsoup/soup.h>

#include <array>
#include <memory>
#include <string>

namespace {

struct Unref {
  void operator()(void* object) const { g_object_unref(object); }
};
template<typename T>
using ObjectPtr = std::unique_ptr<T, Unref>;
struct ErrorFree {
  void operator()(GError* error) const { g_error_free(error); }
};
using ErrorPtr = std::unique_ptr<GError, ErrorFree>;
struct MultipartFree {
  void operator()(SoupMultipart* multipart) const { soup_multipart_free(multipart); }
};
struct BytesUnref {
  void operator()(GBytes* bytes) const { g_bytes_unref(bytes); }
};

// These two handlers record whether there is a connection for the request or its last redirect.
void on_starting(SoupMessage*, gpointer is_connected)
{
  *static_cast<bool*>(is_connected) = true;
}
void on_restarted(SoupMessage*, gpointer is_connected)
{
  *static_cast<bool*>(is_connected) = false;
}

// Converts an error of the library to the numbers of libsoup 2.4.
HttpFailure failure_of(const GError& error, bool is_connected)
{
  if (error.domain == G_TLS_ERROR)
    return NO_SECURE_CONNECTION;
  if (g_error_matches(&error, SOUP_SESSION_ERROR, SOUP_SESSION_ERROR_TOO_MANY_REDIRECTS) ||
      g_error_matches(&error, SOUP_SESSION_ERROR, SOUP_SESSION_ERROR_TOO_MANY_RESTARTS))
    return TOO_MANY_REDIRECTS;
  if (error.domain == SOUP_SESSION_ERROR ||
      g_error_matches(&error, G_IO_ERROR, G_IO_ERROR_PARTIAL_INPUT))
    return NOT_HTTP;
  if (error.domain == G_RESOLVER_ERROR)
    return NAME_NOT_FOUND;
  return is_connected ? CONNECTION_LOST : NO_CONNECTION;
}

void take_header(const char* name, const char* value, gpointer headers)
{
  static_cast<decltype(HttpAnswer::Received::headers)*>(headers)->emplace_back(name, value);
}

// Reads the body until its end or the limit. `cancellable` belongs to the request.
void receive_body(GInputStream* stream, SoupMessage* message, GCancellable* cancellable,
                  const BodyLimit& limit, HttpAnswer::Received& answer)
{
  std::array<char, 65536> buffer;
  std::size_t size = 0;
  GError* failure = nullptr;
  gssize count = 0;
  while ((count = g_input_stream_read(stream, buffer.data(), buffer.size(), cancellable,
                                      &failure)) > 0) {
    size += static_cast<std::size_t>(count);
    if (size > limit.bytes) {
      g_cancellable_cancel(cancellable); // closes the connection instead of reading the rest
      return;
    }
    if (limit.is_kept)
      answer.body.append(buffer.data(), static_cast<std::size_t>(count));
  }
  const ErrorPtr error(failure);
  if (error)
    answer.status = CONNECTION_LOST;
  // The library does not detect an incomplete body if the server sent "Connection: close".
  SoupMessageHeaders* const headers = soup_message_get_response_headers(message);
  answer.is_whole =
      !error && (soup_message_headers_get_encoding(headers) != SOUP_ENCODING_CONTENT_LENGTH ||
                 static_cast<goffset>(size) >= soup_message_headers_get_content_length(headers));
}

// Encodes the file's name in the only part of a form like libsoup 2.4 (RFC 8187, 3.2.1).
// libsoup 3 encodes exactly the characters that need no encoding, and it does not encode others
// such as the percent sign.
void encode_file_name(SoupMultipart* multipart, const FormFile& file)
{
  if (g_str_is_ascii(file.file_name.c_str()) ||
      !g_utf8_validate(file.file_name.c_str(), -1, nullptr))
    return;
  const GMemory<char> name(g_uri_escape_string(file.file_name.c_str(), "!$&+", FALSE));
  const std::string disposition =
      "form-data; name=\"" + file.control_name + "\"; filename*=UTF-8''" + name.get();
  SoupMessageHeaders* headers = nullptr;
  GBytes* body = nullptr;
  soup_multipart_get_part(multipart, 0, &headers, &body);
  soup_message_headers_clear(headers); // keeps the order
  soup_message_headers_append(headers, "Content-Disposition", disposition.c_str());
  soup_message_headers_append(headers, "Content-Type", file.content_type.c_str());
}

// Sends the message and takes ownership of it. `new_message` is null if the library could not
// parse the address.
HttpAnswer::Received send(SoupSession& session, SoupMessage* new_message, const BodyLimit& limit)
{
  HttpAnswer::Received answer;
  answer.status = NOT_HTTP;
  const ObjectPtr<SoupMessage> message(new_message);
  if (!message)
    return answer;
  bool is_connected = false;
  g_signal_connect(message.get(), "starting", G_CALLBACK(on_starting), &is_connected);
  g_signal_connect(message.get(), "restarted", G_CALLBACK(on_restarted), &is_connected);
  const ObjectPtr<GCancellable> cancellable(g_cancellable_new());
  const BlockingCall call;
  GError* failure = nullptr;
  const ObjectPtr<GInputStream> stream(
      soup_session_send(&session, message.get(), cancellable.get(), &failure));
  const ErrorPtr error(failure);
  g_signal_handlers_disconnect_by_data(message.get(), &is_connected);
  soup_message_headers_foreach(soup_message_get_response_headers(message.get()), take_header,
                               &answer.headers);
  if (error) {
    answer.status = failure_of(*error, is_connected);
    return answer;
  }
  answer.status = static_cast<int>(soup_message_get_status(message.get()));
  receive_body(stream.get(), message.get(), cancellable.get(), limit, answer);
  g_input_stream_close(stream.get(), cancellable.get(), nullptr);
  return answer;
}

} // namespace

void HttpSessionClose::operator()(SoupSession* session) const
{
  g_object_unref(session);
}

HttpSession open_http_session(bool log_bodies)
{
  HttpSession session(soup_session_new());
  // Behave like the synchronous session of libsoup 2.4, which neither requests compressed answers
  // nor uses the system's proxy.
  soup_session_remove_feature_by_type(session.get(), SOUP_TYPE_CONTENT_DECODER);
  soup_session_set_proxy_resolver(session.get(), nullptr);
  if (log_bodies) {
    const ObjectPtr<SoupLogger> logger(soup_logger_new(SOUP_LOGGER_LOG_BODY));
    soup_session_add_feature(session.get(), SOUP_SESSION_FEATURE(logger.get()));
  }
  return session;
}

HttpAnswer::Received send_question(SoupSession& session, const std::string& url,
                                   const BodyLimit& limit)
{
  return send(session, soup_message_new(SOUP_METHOD_GET, url.c_str()), limit);
}

HttpAnswer::Received send_form(SoupSession& session, const std::string& url, const FormFile& file,
                               const BodyLimit& limit)
{
  const std::unique_ptr<GBytes, BytesUnref> bytes(
      g_bytes_new(file.contents.data(), file.contents.size()));
  const std::unique_ptr<SoupMultipart, MultipartFree> multipart(
      soup_multipart_new(SOUP_FORM_MIME_TYPE_MULTIPART));
  soup_multipart_append_form_file(multipart.get(), file.control_name.c_str(),
                                  file.file_name.c_str(), file.content_type.c_str(), bytes.get());
  encode_file_name(multipart.get(), file);
  SoupMessage* const message = soup_message_new_from_multipart(url.c_str(), multipart.get());
  // The library would repeat a redirected request without the file.
  if (message)
    soup_message_add_flags(message, SOUP_MESSAGE_NO_REDIRECT);
  return send(session, message, limit);
}
