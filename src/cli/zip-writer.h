#pragma once

#include <cstdint>
#include <exception>
#include <string>

#include "cli/archive-handle.h"
#include "cli/output-file.h"
#include "cli/spool-file.h"

// Writes a zip archive. All entries have the same time, owner and mode, so the same entries
// result in the same bytes. Names are UTF-8. All functions throw CouldNotRun if they fail.
class ZipWriter
{
public:
  // The bytes go to `the_output` immediately. REQUIRES: `the_output` outlives this object.
  explicit ZipWriter(OutputFile& the_output);
  ~ZipWriter();
  ZipWriter(const ZipWriter&) = delete;
  ZipWriter& operator=(const ZipWriter&) = delete;

  // Add an entry. `name` is its path in the archive, without a slash at the end.
  void add_directory(const std::string& name);
  void add_file(const std::string& name, const std::string& bytes);
  // Adds a file with the bytes that were written to `spool`.
  void add_file(const std::string& name, SpoolFile& spool);
  // Writes the end of the archive. Call it once, after the last entry.
  void finish();

private:
  void add_header(const std::string& name, unsigned int type, std::int64_t size);
  void add_data(const std::string& bytes);
  void check(int result);

  OutputFile& output;
  std::exception_ptr failure; // from the output; exceptions cannot pass through the library
  ArchiveWriter zip;
};
