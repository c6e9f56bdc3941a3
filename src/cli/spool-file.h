#pragma once

#include <cstdint>

#include "cli/output-file.h"

// A temporary file without a name: what is written to it is read again from the start, and
// it is gone with this object. Failures are thrown as CouldNotRun.
class SpoolFile
{
public:
  SpoolFile();

  void write(const std::string& bytes);
  // To be called once all is written: goes back to the start. Returns the size in bytes.
  std::int64_t rewind();
  // The next bytes, at most `most`; none at the end.
  std::string read(std::size_t most);

private:
  OwnedFile file;
};
