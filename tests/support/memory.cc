#include "support/memory.h"

#include <sys/resource.h>
#include <unistd.h>

#include <fstream>

long memory_peak_kb()
{
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss;
}

long memory_now_kb()
{
  std::ifstream pages("/proc/self/statm");
  long size = 0;
  long resident = 0;
  pages >> size >> resident;
  return resident * (sysconf(_SC_PAGESIZE) / 1024);
}
