#include "data-set-info.h"

#include <glib.h>

#include <algorithm>
#include <fstream>

#include "answer.h"

namespace {

void check_value(const std::string& key, const std::string& value)
{
  const bool has_control =
      std::any_of(value.begin(), value.end(), [](char c) { return g_ascii_iscntrl(c); });
  if (value.empty() || has_control)
    throw Refusal{500, "data-file-info.txt has no usable " + key};
}

} // namespace

DataSetInfo read_data_set_info(const std::string& dir)
{
  std::ifstream file(dir + "/data-file-info.txt", std::ios::binary);
  if (!file)
    throw Refusal{500, "There is no data-file-info.txt in the data set"};
  DataSetInfo info;
  for (std::string line; std::getline(file, line);) {
    const auto equals = line.find('=');
    const std::string key = line.substr(0, equals);
    if (equals != std::string::npos && key == "timestamp")
      info.timestamp = line.substr(equals + 1);
    if (equals != std::string::npos && key == "updated")
      info.updated = line.substr(equals + 1);
  }
  check_value("timestamp", info.timestamp);
  check_value("updated", info.updated);
  return info;
}
