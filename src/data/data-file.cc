#include "data/data-file.h"

#include <filesystem>
#include <system_error>

std::ifstream open_data_file(const std::string& path)
{
  std::error_code no_such_file;
  if (!std::filesystem::is_regular_file(path, no_such_file))
    return {};
  std::ifstream in(path);
  if (in.is_open()) {
    in.peek();
    if (in.bad())
      in.close();
  }
  return in;
}
