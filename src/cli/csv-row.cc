#include "cli/csv-row.h"

namespace {

std::string csv_field(const std::string& text)
{
  if (text.find_first_of("\",\r\n") == std::string::npos)
    return text;
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"')
      quoted += '"';
    quoted += c;
  }
  return quoted + '"';
}

} // namespace

std::string csv_row(const std::vector<std::string>& fields)
{
  std::string line;
  for (const std::string& field : fields) {
    if (&field != &fields.front())
      line += ',';
    line += csv_field(field);
  }
  return line + "\r\n";
}
