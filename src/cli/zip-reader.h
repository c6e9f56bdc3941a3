#pragma once

#include <memory>
#include <string>

#include "cli/utf8-names.h"

struct archive;
struct archive_entry;

// Reads the entries of a zip archive one after the other. Failures are thrown as
// CouldNotRun.
class ZipReader
{
public:
  // The largest content that content() reads, in bytes.
  static constexpr std::size_t largest_content = 64UL * 1024 * 1024;

  // Opens the archive at `path`.
  explicit ZipReader(const std::string& path);

  // Goes to the next entry. False at the end.
  bool next();
  const std::string& name() const { return entry_name; }
  bool is_directory() const;
  // Neither a link nor anything else but a plain file.
  bool is_file() const;
  // The bytes of the file, to be called once per entry. Its checksum has been verified.
  std::string content();

private:
  struct Free {
    void operator()(archive* zip) const;
  };

  [[noreturn]] void fail() const;

  const Utf8Names names;
  std::unique_ptr<archive, Free> zip;
  archive_entry* entry = nullptr; // of `zip`
  std::string entry_name;
};
