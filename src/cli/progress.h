#pragma once

#include <cstddef>

// How far a command has come, in one line of standard error that is written over; nothing
// is shown if that is no terminal.
class Progress
{
public:
  Progress();

  // To be called for each piece of work; writes a line now and then.
  void show(std::size_t done, std::size_t all);
  // Removes the line, before anything else is written.
  void clear();

private:
  const bool is_terminal;
  bool is_shown = false;
};
