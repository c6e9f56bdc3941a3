#include "server/http.h"

#include "core/c-resource.h"
#include "server/http-library.h"

#include <glib.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

namespace {

struct UriUnref {
  void operator()(GUri* uri) const { g_uri_unref(uri); }
};

// The limit of a body that the program discards.
constexpr BodyLimit unneeded_body{std::size_t{1} << 20, false};

// Returns the address in a form that both versions of the library accept, or nullopt if it is
// not an address of a server. Encodes characters like a browser. A percent sign that does not
// begin an escape sequence is an error.
std::optional<std::string> http_address(const std::string& url)
{
  constexpr int strict = G_URI_FLAGS_HAS_PASSWORD | G_URI_FLAGS_ENCODED_PATH |
                         G_URI_FLAGS_ENCODED_QUERY | G_URI_FLAGS_ENCODED_FRAGMENT |
                         G_URI_FLAGS_SCHEME_NORMALIZE;
  constexpr int relaxed = strict | G_URI_FLAGS_PARSE_RELAXED;
  const std::unique_ptr<GUri, UriUnref> uri(
      g_uri_parse(url.c_str(), static_cast<GUriFlags>(relaxed), nullptr));
  if (!uri)
    return std::nullopt;
  const std::string scheme = g_uri_get_scheme(uri.get());
  const char* const host = g_uri_get_host(uri.get());
  if ((scheme != "http" && scheme != "https") || !host || !*host)
    return std::nullopt;
  const GMemory<char> address(g_uri_to_string(uri.get()));
  if (!g_uri_is_valid(address.get(), static_cast<GUriFlags>(strict), nullptr))
    return std::nullopt;
  return address.get();
}

HttpAnswer no_answer(HttpFailure failure)
{
  HttpAnswer::Received nothing;
  nothing.status = failure;
  return HttpAnswer(std::move(nothing));
}

// Returns the name with line breaks encoded as in browsers. The library does not accept line
// breaks.
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

} // namespace

HttpAnswer::HttpAnswer(Received all) : received(std::move(all)) {}

const char* HttpAnswer::header(const char* name) const
{
  const auto& headers = received.headers;
  const auto found = std::find_if(headers.rbegin(), headers.rend(), [name](const auto& header) {
    return g_ascii_strcasecmp(header.first.c_str(), name) == 0;
  });
  return found == headers.rend() ? nullptr : found->second.c_str();
}

HttpAnswer http_get(SoupSession& session, const std::string& url)
{
  const auto address = http_address(url);
  if (!address)
    return no_answer(NOT_HTTP);
  return HttpAnswer(send_question(session, *address, unneeded_body));
}

HttpAnswer http_fetch(SoupSession& session, const std::string& url, std::size_t limit)
{
  const auto address = http_address(url);
  if (!address)
    return no_answer(NOT_HTTP);
  return HttpAnswer(send_question(session, *address, {limit, true}));
}

HttpAnswer http_post(SoupSession& session, const std::string& url, const FormFile& file)
{
  const auto address = http_address(url);
  if (!address)
    return no_answer(NOT_HTTP);
  FormFile sent = file;
  sent.file_name = sendable(file.file_name);
  return HttpAnswer(send_form(session, *address, sent, unneeded_body));
}
