#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

// A new directory. The destructor removes it.
class TemporaryDirectory
{
public:
  TemporaryDirectory() : path((std::filesystem::temp_directory_path() / "bench-XXXXXX").string())
  {
    if (!mkdtemp(path.data()))
      throw std::system_error(errno, std::generic_category(), path);
    path += '/';
  }
  ~TemporaryDirectory()
  {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

  std::string path; // ends in a slash
};
