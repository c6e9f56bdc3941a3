#pragma once

#include <glibmm/ustring.h>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/checked-data-set.h"

// A text of a data set as messages show it: in quotes, and cut if it is long.
std::string quoted(const std::string& text);

// The check of one CSV file. It reads the file as the program does, but goes on behind
// faults, and hands every row that has the right width to the rules of the file.
class TableCheck
{
public:
  // `headings` are those that the file needs; it ends with a null pointer.
  TableCheck(CheckedDataSet& set, std::string file, const char* const* headings);
  virtual ~TableCheck() = default;
  TableCheck(const TableCheck&) = delete;
  TableCheck& operator=(const TableCheck&) = delete;

  // Checks the file.
  void run();

  // Of the row in hand, from 1; blank lines count.
  long line() const { return line_number; }
  // Reports a fault of the row in hand.
  void fault(DataRule rule, std::string consequence);
  // Reports a fault of the whole file.
  void file_fault(DataRule rule, std::string consequence);

protected:
  virtual void check_row() = 0;
  // All rows have been checked. Only if is_whole() is what has not come missing.
  virtual void check_end() {}

  // Whether all rows so far could be read, and there are some.
  bool is_whole() const { return is_sound && has_rows; }

  // Fields of the row in hand. `heading` is an index in the list of headings.
  const std::string& text(std::size_t heading) const;
  // Of a heading that the file need not have; empty if it has none.
  const std::string& optional_text(const char* heading) const;

  // The number as the program keeps it if it has to be between the two. None if it is not,
  // and that has been reported.
  std::optional<int> number(std::size_t heading, int lowest, int highest);
  // An id that numbers a table. None if the program skips the row, and that has been reported.
  std::optional<int> id(std::size_t heading);
  // A field that has to be "0" or "1".
  bool flag(std::size_t heading);
  // A name that users need, of a thing such as "The zone 40".
  void require_name(const std::string& name, const char* kind, const std::string& the_id);
  // The id of that thing stood in line `before`, too, if that is a line.
  void check_duplicate(std::optional<long> before, const char* kind, const std::string& the_id,
                       const char* consequence);
  // Hints at wide gaps between ids that number a table; `kind` as in "the zone".
  void check_gaps(const NumberedIds& ids, const char* kind);

  CheckedDataSet& set;

private:
  void check_lines(std::istream& in);
  void check_line(std::string_view line);
  void check_bytes(std::string_view line);
  void check_quotes(std::string_view line, std::size_t botched);
  void check_headings();
  void check_fields();
  void check_excess(const class FileLines& lines);
  void check_digits(std::size_t heading, int kept);

  const std::string file;
  const char* const* const headings;
  std::vector<Glib::ustring> fields; // of the row in hand
  std::vector<std::size_t> columns;  // of the headings, if has_headings
  std::map<std::string, std::size_t, std::less<>> heading_columns;
  bool headings_pending = true;
  bool has_headings = true; // all that the file needs
  bool has_mark = false;    // a byte-order mark stands before the headings
  bool has_returns = false;
  bool is_sound = true;
  bool has_rows = false;
  long line_number = 0;
};
