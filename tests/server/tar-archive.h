#pragma once

#include <string>
#include <vector>

// An entry of a tar archive as somebody who means harm would write it.
struct TarEntry {
  enum Type : char { FILE = '0', HARD_LINK = '1', LINK = '2', DIRECTORY = '5', FIFO = '6' };

  std::string name;
  Type type = FILE;
  std::string contents; // of a link: where it leads
};

// Writes an archive of them, in order and as they stand, packed by bzip2.
void write_archive(const std::string& path, const std::vector<TarEntry>& entries);
