#include "request-record.h"

#include <fstream>
#include <utility>

#include "c-owner.h"

RequestRecord::RequestRecord(std::string dir_) : dir(std::move(dir_)) {}

void RequestRecord::keep(SoupMessage* message, const std::string& road)
{
  ++count;
  if (dir.empty())
    return;
  std::ofstream file(dir + "/" + std::to_string(count) + "-" + road + ".txt", std::ios::binary);
  file << message->method << ' ' << target_of(message) << " HTTP/1."
       << static_cast<int>(soup_message_get_http_version(message)) << "\r\n";

  SoupMessageHeadersIter headers;
  soup_message_headers_iter_init(&headers, message->request_headers);
  const char* name = nullptr;
  const char* value = nullptr;
  while (soup_message_headers_iter_next(&headers, &name, &value))
    file << name << ": " << value << "\r\n";
  file << "\r\n";

  const SoupBufferPtr body(soup_message_body_flatten(message->request_body));
  file.write(body->data, static_cast<std::streamsize>(body->length));
}

std::string target_of(SoupMessage* message)
{
  const GText target(soup_uri_to_string(soup_message_get_uri(message), true));
  return target.get();
}
