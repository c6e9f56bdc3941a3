// Listener and Request for libsoup 3.
#include "listener.h"
#include "request.h"

struct LibraryRequest {
  SoupServerMessage* message;
};

namespace {

std::string bytes_of(GBytes& bytes)
{
  gsize size = 0;
  const auto* const data = static_cast<const char*>(g_bytes_get_data(&bytes, &size));
  return size == 0 ? std::string() : std::string(data, size);
}

void on_request(SoupServer*, SoupServerMessage* message, const char* path, GHashTable* query,
                gpointer listener)
{
  LibraryRequest request{message};
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
  const unsigned port = static_cast<unsigned>(g_uri_get_port(static_cast<GUri*>(addresses->data)));
  g_slist_free_full(addresses, [](gpointer uri) { g_uri_unref(static_cast<GUri*>(uri)); });
  return port;
}

std::string Request::method() const
{
  return soup_server_message_get_method(request.message);
}

std::string Request::target() const
{
  GUri* const uri = soup_server_message_get_uri(request.message);
  const char* const query = g_uri_get_query(uri);
  return std::string(g_uri_get_path(uri)) + (query ? "?" + std::string(query) : "");
}

int Request::minor_version() const
{
  return static_cast<int>(soup_server_message_get_http_version(request.message));
}

SoupMessageHeaders* Request::library_headers() const
{
  return soup_server_message_get_request_headers(request.message);
}

std::string Request::body() const
{
  const GBytesPtr body(
      soup_message_body_flatten(soup_server_message_get_request_body(request.message)));
  return bytes_of(*body);
}

FormFile Request::form_file() const
{
  check_content_type();
  const GBytesPtr all(
      soup_message_body_flatten(soup_server_message_get_request_body(request.message)));
  const SoupMultipartPtr multipart(soup_multipart_new_from_message(library_headers(), all.get()));
  check_has_one_part(multipart.get());
  SoupMessageHeaders* headers = nullptr;
  GBytes* body = nullptr;
  soup_multipart_get_part(multipart.get(), 0, &headers, &body);
  return {header_of(headers, "Content-Disposition"), content_type_of(headers), bytes_of(*body)};
}

void Request::answer(const Answer& answer) const
{
  SoupServerMessage* const message = request.message;
  soup_server_message_set_status(message, static_cast<guint>(answer.status), nullptr);
  for (const auto& [name, value] : answer.headers)
    soup_message_headers_append(soup_server_message_get_response_headers(message), name.c_str(),
                                value.c_str());
  soup_message_body_append(soup_server_message_get_response_body(message), SOUP_MEMORY_COPY,
                           answer.body.data(), answer.body.size());
}

GObjectPtr<GIOStream> Request::take_connection() const
{
  return GObjectPtr<GIOStream>(soup_server_message_steal_connection(request.message));
}
