#include "request-record.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <utility>

namespace fs = std::filesystem;

namespace {

// Returns the highest number with which a file's name in the directory begins; 0 if there is
// none.
int highest_number(const std::string& dir)
{
  int highest = 0;
  std::error_code unreadable;
  for (const auto& file : fs::directory_iterator(dir, unreadable))
    highest = std::max(highest, std::atoi(file.path().filename().c_str()));
  return highest;
}

// Creates the file. Returns false if it exists, because another server may use the same
// directory. Ignores other failures, because the server also works without a record.
bool make_new_file(const std::string& path)
{
  const int descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
  if (descriptor < 0)
    return errno != EEXIST;
  close(descriptor);
  return true;
}

} // namespace

RequestRecord::RequestRecord(std::string dir_)
    : dir(std::move(dir_)), count(dir.empty() ? 0 : highest_number(dir))
{
}

void RequestRecord::store(const Request& request, const std::string& route)
{
  if (dir.empty())
    return;
  std::string path;
  do
    path = dir + "/" + std::to_string(++count) + "-" + route + ".txt";
  while (!make_new_file(path));
  std::ofstream file(path, std::ios::binary);
  file << request.method() << ' ' << request.target() << " HTTP/1." << request.minor_version()
       << "\r\n";
  for (const auto& [name, value] : request.headers())
    file << name << ": " << value << "\r\n";
  file << "\r\n" << request.body();
}
