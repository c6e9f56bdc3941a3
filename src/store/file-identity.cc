#include "store/file-identity.h"

#include "core/c-resource.h"
#include "core/file-contents.h"
#include "core/text.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <filesystem>
#include <system_error>

std::string resolved_path(const std::string& path)
{
  std::error_code trouble;
  const std::filesystem::path resolved = std::filesystem::weakly_canonical(path, trouble);
  return trouble ? path : resolved.string();
}

bool same_place(const std::string& path, const std::string& other)
{
  return !path.empty() && !other.empty() &&
         (path == other || resolved_path(path) == resolved_path(other));
}

bool leads_into(const std::string& path, const std::string& directory)
{
  return begins_with(resolved_path(path), resolved_path(directory) + "/");
}

bool belongs_to(const std::string& path, const std::string& directory)
{
  return begins_with(path, directory) || leads_into(path, directory);
}

bool same_file(const std::string& path, const std::string& other)
{
  struct stat first = {};
  struct stat second = {};
  return stat(path.c_str(), &first) == 0 && stat(other.c_str(), &second) == 0 &&
         first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

std::optional<std::string> file_bytes(const std::string& path, std::size_t limit)
{
  const Descriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  struct stat info = {};
  if (file.number < 0 || fstat(file.number, &info) != 0 || !S_ISREG(info.st_mode) ||
      info.st_size > static_cast<off_t>(limit))
    return std::nullopt;
  auto contents = read_bytes(file, limit + 1);
  if (contents && contents->size() > limit)
    return std::nullopt; // the file has grown in the meantime
  return contents;
}

bool file_holds(const std::string& path, const std::string& bytes)
{
  return file_bytes(path, bytes.size()) == bytes;
}
