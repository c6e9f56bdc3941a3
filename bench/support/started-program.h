#pragma once

#include <sys/types.h>

#include <chrono>
#include <string>
#include <vector>

// A program that was started with a fresh home directory, as if by a new user. It
// is killed, and its home removed, at the end of this object's life.
class StartedProgram
{
public:
  // Ends this program if there is no such command.
  explicit StartedProgram(std::vector<std::string> command);
  ~StartedProgram();
  StartedProgram(const StartedProgram&) = delete;
  StartedProgram& operator=(const StartedProgram&) = delete;

  // Returns once the program has nothing more to do than to wait for its user.
  void wait_until_idle() const;
  // The most memory that it has had so far, in bytes.
  double peak_bytes() const;

  std::string home;
  pid_t pid = -1;
  std::chrono::steady_clock::time_point started;
};
