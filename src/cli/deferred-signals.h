#pragma once

#include <csignal>

// Blocks the signals that ask the process to end (SIGHUP, SIGINT, SIGTERM) during its
// lifetime, so that the process can clean up. The destructor delivers a signal that has
// arrived in the meantime.
class DeferredSignals
{
public:
  DeferredSignals(); // blocks the signals in the current thread
  ~DeferredSignals();
  DeferredSignals(const DeferredSignals&) = delete;
  DeferredSignals& operator=(const DeferredSignals&) = delete;

  // Returns whether one of the signals has arrived, so that the caller should stop.
  bool is_pending() const;

private:
  sigset_t held{};
  sigset_t before{};
};
