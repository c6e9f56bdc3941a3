#pragma once

#include <string>
#include <vector>

// An entry of a tar archive, as an attacker would write it.
struct TarEntry {
  enum Type : char { FILE = '0', HARD_LINK = '1', LINK = '2', DIRECTORY = '5', FIFO = '6' };

  std::string name;
  Type type = FILE;
  std::string contents; // for a link: its target
};

// Writes an archive of these entries, unchanged and in order, compressed with bzip2. Fails the test
// if this is not possible.
void write_archive(const std::string& path, const std::vector<TarEntry>& entries);
