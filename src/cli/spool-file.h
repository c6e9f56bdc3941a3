#pragma once

#include <cstdint>

#include "cli/output-file.h"

// A temporary file without a name. Write all bytes, call rewind(), and then read them. The
// destructor removes the file. All functions throw CouldNotRun if they fail.
class SpoolFile
{
public:
  SpoolFile(); // creates the file

  // Appends bytes. REQUIRES: rewind() has not been called.
  void write(const std::string& bytes);
  // Moves to the start of the file for reading. Returns the size in bytes.
  std::int64_t rewind();
  // Returns the next bytes, at most `most`. Returns an empty text at the end.
  std::string read(std::size_t most);

private:
  OwnedFile file;
};
