#pragma once

#include <string>

// The metadata of a data set, from data-file-info.txt.
class DataFileInfo
{
public:
  // Reads the file in `dir`, which ends in a slash. If the file is missing, the object is
  // invalid. If the file exceeds a limit of data-file.h, shows a message, and the object is
  // invalid. If the file has an unknown version, shows a message. A line without "=" ends the
  // process.
  explicit DataFileInfo(const std::string& dir);

  // Returns the name of the file, without a directory.
  static std::string get_filename();

  std::string timestamp; // the newer set has the larger one, compared as bytes
  std::string updated;   // a date for people
  bool valid = false;    // whether the file has both

private:
  void take_line(const std::string& line);
};
