#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>

class Output;

// Closes a C stream.
struct FileClose {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using OwnedFile = std::unique_ptr<std::FILE, FileClose>;

// The destination of a command's result: standard output or a file. A new file is written
// under a temporary name in the same directory; commit() renames it, so that an incomplete file
// never has the final name. Without commit(), the destructor removes it. A device or a pipe is
// written directly. All functions throw CouldNotRun if they fail.
class OutputFile
{
public:
  // Whether commit() may replace an existing file.
  enum class Existing { replace, refuse };

  // If `the_path` is empty, the result goes to `the_output`. REQUIRES: `the_output` outlives
  // this object.
  OutputFile(const std::string& the_path, Existing the_existing, Output& the_output);
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  // Append bytes.
  void write(const char* bytes, std::size_t size);
  void write(const std::string& bytes) { write(bytes.data(), bytes.size()); }
  // Flushes the written bytes, to the disk if the destination is a file.
  void flush();
  // Flushes the written bytes and renames the temporary file.
  void commit();
  // Returns the path of the temporary file, or an empty text if there is none.
  const std::string& written_path() const { return scratch; }

private:
  [[noreturn]] void fail() const; // with the text of errno
  void open_scratch();

  const std::string path;
  const Existing existing;
  std::string scratch; // the path of the temporary file; empty if there is none
  OwnedFile file;      // null for standard output
  Output& output;
};
