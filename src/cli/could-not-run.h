#pragma once

#include <stdexcept>

// Ends a command with ExitStatus::COULD_NOT_RUN. run_tool() alone catches it and prints
// its text, which is one sentence without a full stop, on standard error.
class CouldNotRun : public std::runtime_error
{
public:
  using std::runtime_error::runtime_error;
};
