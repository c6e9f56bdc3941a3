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
  // Ends this program if the command does not exist.
  explicit StartedProgram(std::vector<std::string> command);
  ~StartedProgram();
  StartedProgram(const StartedProgram&) = delete;
  StartedProgram& operator=(const StartedProgram&) = delete;

  // Returns when the program only waits for its user.
  void wait_until_idle() const;
  // Returns the program's peak memory so far, in bytes.
  double peak_bytes() const;

  std::string home;
  pid_t pid = -1;
  std::chrono::steady_clock::time_point started;
};
