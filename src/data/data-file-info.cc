#include "data/data-file-info.h"

#include "core/markup.h"
#include "core/report.h"
#include "data/data-file.h"
#include "data/file-lines.h"

#include <glibmm/ustring.h>

#include <cstdio>
#include <string_view>

DataFileInfo::DataFileInfo(const std::string& dir)
{
  std::ifstream in = open_data_file(dir + get_filename());
  FileLines lines(in);
  for (std::string_view line; lines.next(line);) {
    if (!line.empty())
      take_line(std::string(line));
  }
  const bool is_too_large = lines.excess() != FileLines::Excess::NONE;
  if (is_too_large)
    error("Data file error: %s has too many bytes", escape_markup(dir + get_filename()).c_str());
  valid = !in.bad() && !is_too_large && !timestamp.empty() && !updated.empty();
}

std::string DataFileInfo::get_filename()
{
  return "data-file-info.txt";
}

void DataFileInfo::take_line(const std::string& line)
{
  const std::size_t equals = line.find('=');
  if (equals == std::string::npos)
    fatal("Data file metadata is corrupted!");

  const std::string key = line.substr(0, equals);
  const std::string value = line.substr(equals + 1);
  if (key == "timestamp") {
    timestamp = value;
  } else if (key == "updated") {
    updated = value;
  } else if (key != "version") {
    printf("Ignoring unknown data-file-info key \"%s\" (= \"%s\")\n", key.c_str(), value.c_str());
  } else if (value != "1") {
    error("Can't handle data file metadata version %s - please download a newer version of this "
          "program!",
          escape_markup(value).c_str());
  }
}
