#pragma once

#include <string>

// What data-file-info.txt says of a data set.
class DataFileInfo
{
public:
  // Reads the file in `dir`, which ends in a slash. A missing file leaves the
  // object invalid, and so does one that exceeds a limit of data-file.h, with a
  // message; a line without "=" ends the program.
  explicit DataFileInfo(const std::string& dir);

  static std::string get_filename();

  std::string timestamp; // compared as bytes: the larger one is the newer set
  std::string updated;   // date for people
  bool valid = false;    // both are there

private:
  void take_line(const std::string& line);
};
