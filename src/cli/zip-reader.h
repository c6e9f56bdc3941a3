#pragma once

#include <string>

#include "cli/archive-handle.h"
#include "cli/utf8-names.h"

// Reads the entries of a zip archive one after the other. All functions throw CouldNotRun if
// they fail.
class ZipReader
{
public:
  // The largest entry that content() reads, in bytes.
  static constexpr std::size_t largest_content = 64UL * 1024 * 1024;

  // Opens the archive at `path`.
  explicit ZipReader(const std::string& path);

  // Moves to the next entry. Returns false at the end.
  bool next();
  // Return facts about the current entry. The name is UTF-8.
  const std::string& name() const { return entry_name; }
  bool is_directory() const;
  // Returns whether the entry is a regular file, not a link or a device.
  bool is_file() const;
  // Returns the bytes of the file and verifies its checksum. REQUIRES: it is called at most once
  // for each entry.
  std::string content();

private:
  [[noreturn]] void fail() const;

  const Utf8Names names;
  ArchiveReader zip;
  archive_entry* entry = nullptr; // `zip` owns it
  std::string entry_name;
};
