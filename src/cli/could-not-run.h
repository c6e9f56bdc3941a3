#pragma once

#include <stdexcept>

// Ends a command with ExitStatus::COULD_NOT_RUN. run_tool() catches it and prints the text to
// standard error. The text is one sentence without a full stop.
class CouldNotRun : public std::runtime_error
{
public:
  using std::runtime_error::runtime_error;
};
