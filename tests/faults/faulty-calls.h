#pragma once

#include <array>
#include <string>

// The kinds of system calls on files that can fail. `open` is opening a file for writing, and
// `list` is opening a directory.
enum class Call { open, write, fsync, link, rename, unlink, mkdir, close, list };
constexpr int number_of_calls = 9;
// Returns the name of a kind of call, such as "open".
const char* name_of(Call call);

// During its lifetime, counts this process's calls on files below a directory and lets some of
// them fail. REQUIRES: there is only one object at a time.
// faulty-calls.cc explains how it intercepts the calls.
class FaultyCalls
{
public:
  explicit FaultyCalls(std::string directory);
  ~FaultyCalls();
  FaultyCalls(const FaultyCalls&) = delete;
  FaultyCalls& operator=(const FaultyCalls&) = delete;

  // Lets the `nth` call of that kind, counted from 1, fail with the errno `number`.
  void fail_once(Call call, int nth, int number);
  // Lets all calls of that kind fail with the errno `number`.
  void fail_always(Call call, int number);
  // Returns how many calls of that kind there were so far.
  int count(Call call) const { return counts[static_cast<std::size_t>(call)]; }

  // Counts a call on a file below the directory. Returns whether it must fail.
  bool count_call(Call call);
  // Returns whether a path is that of the directory or of a file below it.
  bool is_below(const std::string& path) const;

private:
  struct Fault {
    int nth = 0; // 0: no fault
    int number = 0;
  };
  std::string directory;
  std::array<int, number_of_calls> counts{};
  std::array<Fault, number_of_calls> faults{};
  std::array<int, number_of_calls> always{}; // errno; 0: no fault
};
