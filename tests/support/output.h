#pragma once

#include "core/report.h"

#include <functional>
#include <string>

// What `action` prints on standard output.
std::string output_of(const std::function<void()>& action);
// The same at that level of trace lines.
std::string output_of(int level, const std::function<void()>& action);

// Sets the level of trace lines as long as it lives.
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
