#include "request.h"

void Request::check_content_type() const
{
  if (g_ascii_strcasecmp(content_type_of(library_headers()).c_str(), "multipart/form-data") != 0)
    throw Refusal{415, "The survey must be sent as a form."};
}

std::vector<std::pair<std::string, std::string>> Request::headers() const
{
  std::vector<std::pair<std::string, std::string>> found;
  SoupMessageHeadersIter headers;
  soup_message_headers_iter_init(&headers, library_headers());
  const char* name = nullptr;
  const char* value = nullptr;
  while (soup_message_headers_iter_next(&headers, &name, &value))
    found.emplace_back(name, value);
  return found;
}

std::string asked_version(GHashTable* query)
{
  const auto* const asked =
      query ? static_cast<const char*>(g_hash_table_lookup(query, "get-version")) : nullptr;
  return asked ? asked : "";
}

std::string header_of(SoupMessageHeaders* headers, const char* name)
{
  const char* const value = soup_message_headers_get_one(headers, name);
  return value ? value : "";
}

std::string content_type_of(SoupMessageHeaders* headers)
{
  const char* const type = soup_message_headers_get_content_type(headers, nullptr);
  return type ? type : "";
}

void check_has_one_part(SoupMultipart* multipart)
{
  if (!multipart)
    throw Refusal{400, "The form cannot be read."};
  if (soup_multipart_get_length(multipart) != 1)
    throw Refusal{400, "The form must contain exactly one file."};
}
