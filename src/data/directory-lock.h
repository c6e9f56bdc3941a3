#pragma once

#include "core/c-resource.h"

#include <filesystem>

// A directory that one program at a time installs data in. Commands that the owner of
// the lock starts share it, so it stays taken until those of a killed program have ended.
class DirectoryLock
{
public:
  // Waits a few seconds while another program has the lock, and says so on standard
  // output.
  explicit DirectoryLock(const std::filesystem::path& directory);

  // Whether another program still has the lock. Where the file system has no locks,
  // nobody ever has it.
  bool is_busy() const { return busy; }

private:
  const Descriptor opened;
  bool busy = false;
};
