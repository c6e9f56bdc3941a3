#pragma once

#include "core/c-resource.h"

#include <filesystem>

// A lock on a directory in which only one program at a time may install data. Commands that
// the program starts share the lock. If the program is killed, the lock is held until these
// commands have ended.
class DirectoryLock
{
public:
  // Takes the lock. Waits a few seconds if another program holds it, and prints that to
  // standard output.
  explicit DirectoryLock(const std::filesystem::path& directory);

  // Returns whether another program still holds the lock. Always false on a file system
  // without locks.
  bool is_busy() const { return busy; }

private:
  const Descriptor opened;
  bool busy = false;
};
