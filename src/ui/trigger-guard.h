#pragma once

#include "core/report.h"

#include <cstdio>

// Sets, during its lifetime, a flag that suppresses a panel's handlers. `job` is the reason in
// the trace.
class TriggerGuard
{
public:
  TriggerGuard(bool& flag, const char* job) : triggers_suppressed(flag), suppressed_by(job)
  {
    triggers_suppressed = true;
    if (debug_level >= 1)
      std::printf("*** Triggers suppressed by %s\n", suppressed_by);
  }
  ~TriggerGuard()
  {
    triggers_suppressed = false;
    if (debug_level >= 1)
      std::printf("*** Triggers released by %s\n", suppressed_by);
  }
  TriggerGuard(const TriggerGuard&) = delete;
  TriggerGuard& operator=(const TriggerGuard&) = delete;

private:
  bool& triggers_suppressed;
  const char* suppressed_by;
};
