// Listener and Request for libsoup 2.4.
#include "listener.h"
#include "request.h"

struct LibraryRequest {
  SoupMessage* message;
  SoupClientContext* client;
};

namespace {

struct BufferFree {
  void operator()(SoupBuffer* buffer) const { soup_buffer_free(buffer); }
};
using BufferPtr = std::unique_ptr<SoupBuffer, BufferFree>;

std::string bytes_of(const SoupBuffer& buffer)
{
  return {buffer.data, buffer.length};
}

void on_request(SoupServer*, SoupMessage* message, const char* path, GHashTable* query,
                SoupClientContext* client, gpointer listener)
{
  LibraryRequest request{message, client};
  static_cast<Listener*>(listener)->handler(Request(request), path, asked_version(query));
}

} // namespace

Listener::Listener(Handler handler_)
    : handler(std::move(handler_)),
      server(soup_server_new("server-header", "survey-server", nullptr))
{
  soup_server_add_handler(server.get(), nullptr, on_request, this, nullptr);
}

unsigned Listener::port() const
{
  GSList* const addresses = soup_server_get_uris(server.get());
  const unsigned port = soup_uri_get_port(static_cast<SoupURI*>(addresses->data));
  g_slist_free_full(addresses, [](gpointer uri) { soup_uri_free(static_cast<SoupURI*>(uri)); });
  return port;
}

std::string Request::method() const
{
  return request.message->method;
}

std::string Request::target() const
{
  const GText target(soup_uri_to_string(soup_message_get_uri(request.message), true));
  return target.get();
}

int Request::minor_version() const
{
  return static_cast<int>(soup_message_get_http_version(request.message));
}

SoupMessageHeaders* Request::library_headers() const
{
  return request.message->request_headers;
}

std::string Request::body() const
{
  const BufferPtr body(soup_message_body_flatten(request.message->request_body));
  return bytes_of(*body);
}

FormFile Request::form_file() const
{
  check_content_type();
  const SoupMultipartPtr multipart(
      soup_multipart_new_from_message(library_headers(), request.message->request_body));
  check_has_one_part(multipart.get());
  SoupMessageHeaders* headers = nullptr;
  SoupBuffer* body = nullptr;
  soup_multipart_get_part(multipart.get(), 0, &headers, &body);
  return {header_of(headers, "Content-Disposition"), content_type_of(headers), bytes_of(*body)};
}

void Request::answer(const Answer& answer) const
{
  soup_message_set_status(request.message, static_cast<guint>(answer.status));
  for (const auto& [name, value] : answer.headers)
    soup_message_headers_append(request.message->response_headers, name.c_str(), value.c_str());
  soup_message_body_append(request.message->response_body, SOUP_MEMORY_COPY, answer.body.data(),
                           answer.body.size());
}

GObjectPtr<GIOStream> Request::take_connection() const
{
  return GObjectPtr<GIOStream>(soup_client_context_steal_connection(request.client));
}
