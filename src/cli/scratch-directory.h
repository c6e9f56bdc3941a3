#pragma once

#include <filesystem>

#include "cli/deferred-signals.h"

// A new empty directory for this user alone, in the system's directory of temporary files.
// It is removed with all that is in it when this object ends and also when the process ends
// by exit(), which the readers of reference data can call. Signals that ask the process to
// end wait for that. Only one such directory may exist at a time.
class ScratchDirectory
{
public:
  // Throws std::filesystem::filesystem_error.
  ScratchDirectory();
  ~ScratchDirectory();
  ScratchDirectory(const ScratchDirectory&) = delete;
  ScratchDirectory& operator=(const ScratchDirectory&) = delete;

  const DeferredSignals signals; // released after the directory is removed
  const std::filesystem::path path;
};
