#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>

class Output;

struct FileClose {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using OwnedFile = std::unique_ptr<std::FILE, FileClose>;

// Where a command writes its result: standard output, or a file that has its name only once
// it is whole. Until commit() a new file is one beside it, which goes with this object; a
// device or a pipe is written to as it is. Failures are thrown as CouldNotRun.
class OutputFile
{
public:
  // Whether a file that exists may be replaced.
  enum class Existing { replace, refuse };

  // An empty `path` is `the_output`, which stays with the caller.
  OutputFile(const std::string& the_path, Existing the_existing, Output& the_output);
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  void write(const char* bytes, std::size_t size);
  void write(const std::string& bytes) { write(bytes.data(), bytes.size()); }
  // Flushes what was written, to the disk if it is a file.
  void flush();
  // Flushes, and gives the file its name.
  void commit();
  // The path to read what was written from before commit(); empty if it has none.
  const std::string& written_path() const { return scratch; }

private:
  [[noreturn]] void fail() const; // with the text of errno
  void open_scratch();

  const std::string path;
  const Existing existing;
  std::string scratch; // empty if the file is written under its own name
  OwnedFile file;      // null for standard output
  Output& output;
};
