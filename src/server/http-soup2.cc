// Later versions of the library declare the synchronous session deprecated, but it still works.
#define SOUP_VERSION_MIN_REQUIRED SOUP_VERSION_2_42

#include "core/blocking-call.h"
#include "server/http-library.h"

#include <libsoup/soup.h>

#include <memory>
#include <string>

namespace {

struct Unref {
  void operator()(void* object) const { g_object_unref(object); }
};
using MessagePtr = std::unique_ptr<SoupMessage, Unref>;
struct MultipartFree {
  void operator()(SoupMultipart* multipart) const { soup_multipart_free(multipart); }
};
struct BufferFree {
  void operator()(SoupBuffer* buffer) const { soup_buffer_free(buffer); }
};

// The state of the reception of an answer's body.
struct Reception {
  SoupSession& session;
  const BodyLimit limit;
  std::string& body;
  std::size_t size = 0; // in bytes, including discarded ones
  bool is_cut = false;
  guint status = 0; // the status of the answer if `is_cut`
};

// Discards the body of the previous answer if that was a redirect.
void on_got_headers(SoupMessage*, gpointer data)
{
  Reception& reception = *static_cast<Reception*>(data);
  reception.body.clear();
  reception.size = 0;
}

void on_got_chunk(SoupMessage* message, SoupBuffer* chunk, gpointer data)
{
  Reception& reception = *static_cast<Reception*>(data);
  if (reception.is_cut)
    return;
  reception.size += chunk->length;
  if (reception.size > reception.limit.bytes) {
    reception.is_cut = true;
    reception.status = message->status_code;
    soup_session_cancel_message(&reception.session, message, SOUP_STATUS_CANCELLED);
  } else if (reception.limit.is_kept) {
    reception.body.append(chunk->data, chunk->length);
  }
}

bool is_body_complete(const Reception& reception, SoupMessageHeaders* headers)
{
  if (reception.is_cut)
    return false;
  return soup_message_headers_get_encoding(headers) != SOUP_ENCODING_CONTENT_LENGTH ||
         static_cast<goffset>(reception.size) >= soup_message_headers_get_content_length(headers);
}

void take_header(const char* name, const char* value, gpointer headers)
{
  static_cast<decltype(HttpAnswer::Received::headers)*>(headers)->emplace_back(name, value);
}

// Sends the message and takes ownership of it. `new_message` is null if the library could not
// parse the address.
HttpAnswer::Received send(SoupSession& session, SoupMessage* new_message, const BodyLimit& limit)
{
  HttpAnswer::Received answer;
  answer.status = NOT_HTTP;
  const MessagePtr message(new_message);
  if (!message)
    return answer;
  // The logger prints only bodies that the library accumulates.
  const bool is_logged = soup_session_has_feature(&session, SOUP_TYPE_LOGGER) != FALSE;
  soup_message_body_set_accumulate(message->response_body, is_logged);

  Reception reception{session, limit, answer.body};
  g_signal_connect(message.get(), "got-headers", G_CALLBACK(on_got_headers), &reception);
  g_signal_connect(message.get(), "got-chunk", G_CALLBACK(on_got_chunk), &reception);
  const BlockingCall call;
  soup_session_send_message(&session, message.get());
  g_signal_handlers_disconnect_by_data(message.get(), &reception);

  // If this program cut the body, the library has replaced the status by that of a cancellation.
  answer.status = static_cast<int>(reception.is_cut ? reception.status : message->status_code);
  answer.is_whole = is_body_complete(reception, message->response_headers);
  soup_message_headers_foreach(message->response_headers, take_header, &answer.headers);
  return answer;
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

HttpAnswer::Received send_question(SoupSession& session, const std::string& url,
                                   const BodyLimit& limit)
{
  return send(session, soup_message_new(SOUP_METHOD_GET, url.c_str()), limit);
}

HttpAnswer::Received send_form(SoupSession& session, const std::string& url, const FormFile& file,
                               const BodyLimit& limit)
{
  const std::unique_ptr<SoupBuffer, BufferFree> buffer(
      soup_buffer_new(SOUP_MEMORY_COPY, file.contents.data(), file.contents.size()));
  const std::unique_ptr<SoupMultipart, MultipartFree> multipart(
      soup_multipart_new(SOUP_FORM_MIME_TYPE_MULTIPART));
  soup_multipart_append_form_file(multipart.get(), file.control_name.c_str(),
                                  file.file_name.c_str(), file.content_type.c_str(), buffer.get());
  SoupMessage* const message = soup_form_request_new_from_multipart(url.c_str(), multipart.get());
  // The library would repeat a redirected request without the file.
  soup_message_set_flags(message, SOUP_MESSAGE_NO_REDIRECT);
  return send(session, message, limit);
}
