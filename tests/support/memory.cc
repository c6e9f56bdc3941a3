#include "support/memory.h"

#include <sys/resource.h>

long memory_peak_kb()
{
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss;
}
