#pragma once

#include <istream>
#include <string>
#include <string_view>

// The lines of a data file, read in large blocks: most of what a file is read
// for is done in the time that copying its lines would take.
class FileLines
{
public:
  // `in` must live as long, and is left to this object.
  explicit FileLines(std::istream& in);

  // The next line without its line feed, which the last one need not have; stays
  // as it is until the next call. False at the end and if the file cannot be
  // read further.
  bool next(std::string_view& line);

private:
  const char* find_feed(std::size_t from) const; // null if none has been read
  bool read_more();

  std::istream& in;
  std::string text;           // read and not yet handed out from `line_start` on
  std::size_t line_start = 0; // of the next line
};
