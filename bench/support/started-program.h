#pragma once

#include <sys/types.h>

#include <chrono>
#include <string>
#include <vector>

// A program that was started with a fresh home directory, as by a new user. The destructor
// kills it and removes the home directory.
class StartedProgram
{
public:
  // Ends this process if the command does not exist.
  explicit StartedProgram(std::vector<std::string> command);
  ~StartedProgram();
  StartedProgram(const StartedProgram&) = delete;
  StartedProgram& operator=(const StartedProgram&) = delete;

  // Waits until the program is idle. Ends this process if it is not idle within 30 seconds.
  void wait_until_idle() const;
  // Returns the program's peak memory so far, in bytes. Ends this process if the program has
  // ended.
  double peak_bytes() const;

  std::string home; // the path of the home directory
  pid_t pid = -1;
  std::chrono::steady_clock::time_point started; // just before the start
};
