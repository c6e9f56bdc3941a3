#pragma once

#include <cstdio>
#include <memory>
#include <string_view>

// The standard output of a tool, which a failure does not leave in silence.
class Output
{
public:
  // Takes over standard output. From then on whatever else the process prints there, such as
  // the messages of the reference data's readers, goes to standard error. To be made once, before
  // any file is opened: it also opens the standard streams that the caller has closed.
  Output();

  // Throws CouldNotRun if a disk is full, a pipe is closed and the like.
  void write(std::string_view text);
  // Hands on what has been written; throws likewise. Without this call the end of the text
  // is not checked.
  void flush();

private:
  struct Close {
    void operator()(FILE* file) const { std::fclose(file); }
  };

  std::unique_ptr<FILE, Close> file; // null if standard output was closed
};
