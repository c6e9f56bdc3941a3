#pragma once

#include "server/tar-archive.h"

#include <string>
#include <vector>

// An archive that somebody who means harm would publish.
struct HostileArchive {
  const char* why; // how it tries to get out of the directory that it is unpacked in
  std::vector<TarEntry> entries;
};

// A file that is not what it should be.
TarEntry hostile_file(const std::string& name);

// Archives that try to write to `outside`, a directory beside the one that they are
// unpacked in. It holds a file diary.txt.
std::vector<HostileArchive> hostile_archives(const std::string& outside);

// Two archives of which the second tries to use what the first left.
struct HostilePair {
  const char* why;
  std::vector<TarEntry> first;
  std::vector<TarEntry> second;
};
std::vector<HostilePair> hostile_pairs(const std::string& outside);

// Entries that pretend to be the program's backup of the data it had before.
std::vector<std::vector<TarEntry>> forged_backups();
