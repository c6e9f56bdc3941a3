#pragma once

#include <cstddef>

// Shows the progress of a command in one line of standard error, which it overwrites. Shows
// nothing if standard error is not a terminal.
class Progress
{
public:
  Progress();

  // Shows that `done` of `all` steps are complete. Most calls write nothing, so the caller can
  // call it after each step.
  void show(std::size_t done, std::size_t all);
  // Removes the line. Call it before any other output.
  void clear();

private:
  const bool is_terminal;
  bool is_shown = false;
};
