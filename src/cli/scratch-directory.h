#pragma once

#include <filesystem>

#include "cli/deferred-signals.h"

// A new empty directory in the system's directory of temporary files, which only this user
// can access. The destructor removes it with its contents; so does exit(), which the readers of
// reference data can call. Signals that ask the process to end are deferred until then.
// REQUIRES: there is only one such object at a time.
class ScratchDirectory
{
public:
  // Throws std::filesystem::filesystem_error if the directory cannot be created.
  ScratchDirectory();
  ~ScratchDirectory();
  ScratchDirectory(const ScratchDirectory&) = delete;
  ScratchDirectory& operator=(const ScratchDirectory&) = delete;

  const DeferredSignals signals; // delivered after the removal of the directory
  const std::filesystem::path path;
};
