#pragma once

#include <exception>
#include <memory>
#include <string>

#include "cli/output-file.h"
#include "cli/spool-file.h"

struct archive;

// Writes a zip archive. Its bytes depend only on what is added: all entries have the same
// time, owner and mode. Names are UTF-8. Failures are thrown as CouldNotRun.
class ZipWriter
{
public:
  // `the_output` gets the bytes as they come about, and stays with the caller.
  explicit ZipWriter(OutputFile& the_output);
  ~ZipWriter();
  ZipWriter(const ZipWriter&) = delete;
  ZipWriter& operator=(const ZipWriter&) = delete;

  void add_directory(const std::string& name);
  void add_file(const std::string& name, const std::string& bytes);
  // A file of what was written to `spool`.
  void add_file(const std::string& name, SpoolFile& spool);
  // Writes the end of the archive; nothing can be added after that.
  void finish();

private:
  struct Free {
    void operator()(archive* zip) const;
  };

  void add_header(const std::string& name, unsigned int type, std::int64_t size);
  void add_data(const std::string& bytes);
  void check(int result);

  OutputFile& output;
  std::exception_ptr failure; // what the output threw, which cannot pass through the library
  std::unique_ptr<archive, Free> zip;
};
