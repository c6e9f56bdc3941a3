#pragma once

#include <stdexcept>

// Ends a command with ExitStatus::COULD_NOT_RUN. Only run_tool() catches it. It prints the
// text, which is one sentence without a full stop, to standard error.
class CouldNotRun : public std::runtime_error
{
public:
  using std::runtime_error::runtime_error;
};
