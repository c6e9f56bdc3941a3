#include "text-coding.h"

#include <glib.h>

#include <stdexcept>

std::vector<std::string> split(const std::string& text, char separator)
{
  std::vector<std::string> pieces;
  std::size_t start = 0;
  for (std::size_t end = 0; (end = text.find(separator, start)) != std::string::npos;
       start = end + 1)
    pieces.push_back(text.substr(start, end - start));
  pieces.push_back(text.substr(start));
  return pieces;
}

std::string decode_percent(const std::string& text)
{
  std::string decoded;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool is_escape = text[i] == '%' && i + 2 < text.size() && g_ascii_isxdigit(text[i + 1]) &&
                           g_ascii_isxdigit(text[i + 2]);
    if (!is_escape) {
      decoded += text[i];
      continue;
    }
    const int byte = g_ascii_xdigit_value(text[i + 1]) * 16 + g_ascii_xdigit_value(text[i + 2]);
    decoded += static_cast<char>(byte);
    i += 2;
  }
  return decoded;
}

int parse_number(const std::string& text)
{
  const bool is_number = !text.empty() && text.size() <= 9 &&
                         text.find_first_not_of("0123456789") == std::string::npos;
  if (!is_number)
    throw std::invalid_argument("\"" + text + "\" is not a number");
  return std::stoi(text);
}
