#pragma once

#include <cstdio>
#include <memory>
#include <string_view>

// The standard output of a tool. It detects and reports all failures.
class Output
{
public:
  // Takes over standard output. All other output of the process to it, such as the messages
  // of the readers of reference data, then goes to standard error. Opens the standard streams
  // that the calling process has closed. REQUIRES: there is only one Output, and the process
  // has not opened a file yet.
  Output();

  // Writes a text. Throws CouldNotRun if that fails, for example on a full disk or a closed
  // pipe.
  void write(std::string_view text);
  // Flushes the written text. Throws CouldNotRun if that fails. Call it at the end; without it,
  // failures to write the buffered text remain undetected.
  void flush();

private:
  struct Close {
    void operator()(FILE* stream) const { std::fclose(stream); }
  };

  std::unique_ptr<FILE, Close> file; // null if standard output was closed
};
