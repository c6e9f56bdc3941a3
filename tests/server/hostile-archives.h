#pragma once

#include "server/tar-archive.h"

#include <string>
#include <vector>

// An archive that an attacker would publish.
struct HostileArchive {
  const char* why; // how it tries to write outside the directory in which it is unpacked
  std::vector<TarEntry> entries;
};

// Returns an entry for a file with contents that must not overwrite another file.
TarEntry hostile_file(const std::string& name);

// Returns archives that try to write to `outside`. This directory is beside the one in which they
// are unpacked, and contains a file diary.txt.
std::vector<HostileArchive> hostile_archives(const std::string& outside);

// Two archives. The second one tries to write through a link from the first one.
struct HostilePair {
  const char* why; // what is linked
  std::vector<TarEntry> first;
  std::vector<TarEntry> second;
};
// Returns pairs that try to write to `outside`, like hostile_archives().
std::vector<HostilePair> hostile_pairs(const std::string& outside);

// Returns archives whose entries pretend to be the program's backup of the old data.
std::vector<std::vector<TarEntry>> forged_backups();
