#pragma once

#include <csignal>

// Holds back the signals that ask the process to end (SIGHUP, SIGINT, SIGTERM) as long as
// it lives, so that what was begun can be cleaned up. One that has come meanwhile then takes
// its usual effect.
class DeferredSignals
{
public:
  DeferredSignals();
  ~DeferredSignals();
  DeferredSignals(const DeferredSignals&) = delete;
  DeferredSignals& operator=(const DeferredSignals&) = delete;

  // Whether one of them has come: it is time to stop.
  bool is_pending() const;

private:
  sigset_t held{};
  sigset_t before{};
};
