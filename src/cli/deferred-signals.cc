#include "cli/deferred-signals.h"

namespace {

constexpr int ending_signals[] = {SIGHUP, SIGINT, SIGTERM};

}

DeferredSignals::DeferredSignals()
{
  sigemptyset(&held);
  for (const int number : ending_signals)
    sigaddset(&held, number);
  sigprocmask(SIG_BLOCK, &held, &before);
}

DeferredSignals::~DeferredSignals()
{
  sigprocmask(SIG_SETMASK, &before, nullptr);
}

bool DeferredSignals::is_pending() const
{
  sigset_t pending{};
  sigpending(&pending);
  for (const int number : ending_signals)
    if (sigismember(&pending, number) == 1)
      return true;
  return false;
}
