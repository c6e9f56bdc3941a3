#include "data/directory-lock.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <thread>

namespace {

using namespace std::chrono_literals;

constexpr auto patience = 5s;
constexpr auto between_attempts = 10ms;

bool is_taken_elsewhere(int directory)
{
  return directory >= 0 && flock(directory, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

} // namespace

// NOLINTNEXTLINE(android-cloexec-open): commands must share the lock, see the header
DirectoryLock::DirectoryLock(const std::filesystem::path& directory)
    : opened(open(directory.c_str(), O_RDONLY | O_DIRECTORY))
{
  busy = is_taken_elsewhere(opened.number);
  if (!busy)
    return;
  std::printf("Another program is installing data in %s; waiting for up to %d seconds.\n",
              directory.c_str(), static_cast<int>(patience.count()));
  const auto end = std::chrono::steady_clock::now() + patience;
  while (busy && std::chrono::steady_clock::now() < end) {
    std::this_thread::sleep_for(between_attempts);
    busy = is_taken_elsewhere(opened.number);
  }
}
