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
  // as it is until the next call. False at the end, if the file cannot be read
  // further, and once the file exceeds a limit of data-file.h.
  bool next(std::string_view& line);

  enum class Excess { NONE, FILE_SIZE, LINE_LENGTH };
  // The limit that the file exceeds, once next() has returned false.
  Excess excess() const { return exceeded; }

private:
  const char* find_feed(std::size_t from) const; // null if none has been read
  bool read_more();

  std::istream& in;
  std::string text;           // read and not yet handed out from `line_start` on
  std::size_t line_start = 0; // of the next line
  std::size_t total_read = 0; // bytes of the file so far
  Excess exceeded = Excess::NONE;
};
