#pragma once

#include "core/report.h"

#include <functional>
#include <string>

// Returns what `action` prints to standard output.
std::string output_of(const std::function<void()>& action);
// Like output_of(), at that trace level.
std::string output_of(int level, const std::function<void()>& action);

// Sets the trace level during its lifetime.
class TraceLevel
{
public:
  explicit TraceLevel(int level) : previous(debug_level) { debug_level = level; }
  ~TraceLevel() { debug_level = previous; }
  TraceLevel(const TraceLevel&) = delete;
  TraceLevel& operator=(const TraceLevel&) = delete;

private:
  int previous;
};
