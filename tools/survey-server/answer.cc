#include "answer.h"

#include <libsoup/soup.h>

#include <algorithm>

namespace {

bool breaks_line(const std::string& text)
{
  return text.find_first_of("\r\n") != std::string::npos;
}

} // namespace

void Answer::add_header(const std::string& name, const std::string& value)
{
  headers.emplace_back(name, value);
}

void Answer::remove_header(const std::string& name)
{
  const auto is_named = [&name](const auto& header) {
    return g_ascii_strcasecmp(header.first.c_str(), name.c_str()) == 0;
  };
  headers.erase(std::remove_if(headers.begin(), headers.end(), is_named), headers.end());
}

bool Answer::has_broken_header() const
{
  return std::any_of(headers.begin(), headers.end(), [](const auto& header) {
    return breaks_line(header.first) || breaks_line(header.second);
  });
}

std::string Answer::head(std::size_t length) const
{
  std::string text = "HTTP/1.1 " + std::to_string(status) + " " +
                     soup_status_get_phrase(static_cast<guint>(status)) + "\r\n";
  for (const auto& [name, value] : headers)
    text.append(name).append(": ").append(value).append("\r\n");
  return text + "Content-Length: " + std::to_string(length) + "\r\nConnection: close\r\n\r\n";
}
