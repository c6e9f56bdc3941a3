#pragma once

#include <istream>
#include <string>
#include <string_view>

// Reads the lines of a data file in large blocks, without a copy of each line.
class FileLines
{
public:
  // REQUIRES: `in` outlives this object, and nothing else reads from it.
  explicit FileLines(std::istream& in);

  // Sets `line` to the next line without its line feed; the last line need not have one.
  // `line` is valid until the next call. Returns false at the end of the file, if reading
  // fails, and if the file exceeds a limit of data-file.h.
  bool next(std::string_view& line);

  enum class Excess { NONE, FILE_SIZE, LINE_LENGTH };
  // Returns which limit the file exceeds. REQUIRES: next() has returned false.
  Excess excess() const { return exceeded; }

private:
  const char* find_feed(std::size_t from) const; // null if there is none in `text`
  bool read_more();

  std::istream& in;
  std::string text;           // what has been read and not yet discarded
  std::size_t line_start = 0; // the position of the next line in `text`
  std::size_t total_read = 0; // in bytes
  Excess exceeded = Excess::NONE;
};
