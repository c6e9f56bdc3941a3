#pragma once

#include <array>
#include <string>

// The system calls of a file's life, as far as they can fail, and the opening of
// a directory to list it.
enum class Call { open, write, fsync, link, rename, unlink, mkdir, close, list };
constexpr int number_of_calls = 9;
const char* name_of(Call call);

// As long as it lives, this process's calls on files below a directory are
// counted and some of them fail. Opening counts only where it is for writing.
// One at a time; see faulty-calls.cc for how the calls get here.
class FaultyCalls
{
public:
  explicit FaultyCalls(std::string directory);
  ~FaultyCalls();
  FaultyCalls(const FaultyCalls&) = delete;
  FaultyCalls& operator=(const FaultyCalls&) = delete;

  // The `nth` call of that kind, counted from 1, fails with that errno.
  void fail_once(Call call, int nth, int number);
  // All of that kind do.
  void fail_always(Call call, int number);
  int count(Call call) const { return counts[static_cast<std::size_t>(call)]; }

  // Whether this call, which is on a file below the directory, is to fail; counts it.
  bool takes(Call call);
  bool is_below(const std::string& path) const;

private:
  struct Fault {
    int nth = 0; // none
    int number = 0;
  };
  std::string directory;
  std::array<int, number_of_calls> counts{};
  std::array<Fault, number_of_calls> faults{};
  std::array<int, number_of_calls> always{}; // errno
};
