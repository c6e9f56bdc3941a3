#pragma once

#include <sys/resource.h>

#include <csignal>

// During its lifetime, no file can become larger than this many bytes, as on a full disk.
class FullDisk
{
public:
  explicit FullDisk(rlim_t bytes) : old_handler(std::signal(SIGXFSZ, SIG_IGN))
  {
    getrlimit(RLIMIT_FSIZE, &old_limit);
    const rlimit limit{bytes, old_limit.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FullDisk()
  {
    setrlimit(RLIMIT_FSIZE, &old_limit);
    std::signal(SIGXFSZ, old_handler);
  }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;

private:
  rlimit old_limit{};
  void (*old_handler)(int);
};
