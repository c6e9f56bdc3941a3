#pragma once

#include "data/csv-line.h"

#include <glibmm/ustring.h>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/checked-data-set.h"

// Returns a text of a data set for a message: in quotes, and shortened if it is long.
std::string quoted(const std::string& text);

// The check of one CSV file. It reads the file like the program, but continues after a fault. It
// calls check_row() for each row that has the right number of fields.
class TableCheck
{
public:
  // `headings` are the required headings; a null pointer ends the array. REQUIRES: `set` and
  // `headings` outlive this object.
  TableCheck(CheckedDataSet& set, std::string file, const char* const* headings);
  virtual ~TableCheck() = default;
  TableCheck(const TableCheck&) = delete;
  TableCheck& operator=(const TableCheck&) = delete;

  // Checks the file.
  void run();

  // Returns the line of the current row, from 1. Blank lines count.
  long line() const { return line_number; }
  // Reports a fault of the current row.
  void fault(DataRule rule, std::string consequence);
  // Reports a fault without a line.
  void file_fault(DataRule rule, std::string consequence);

protected:
  // Checks the current row.
  virtual void check_row() = 0;
  // Checks the complete file. run() calls it at the end, even if the file could not be read. An
  // override reports something as missing only if is_complete().
  virtual void check_end() {}

  // Returns whether the file has rows so far and all of them could be read.
  bool is_complete() const { return is_sound && has_rows; }

  // Returns a field of the current row. `heading` is an index in the list of headings.
  const std::string& text(std::size_t heading) const;
  // Returns the field of an optional heading, or an empty text if the file does not have it.
  const std::string& optional_text(const char* heading) const;

  // Returns the number in a field as the program reads it. If it is not in the range from
  // `lowest` to `highest`, reports a fault and returns nullopt.
  std::optional<int> number(std::size_t heading, int lowest, int highest);
  // Returns an id that is the index of a table. If the program skips the row, reports a fault
  // and returns nullopt.
  std::optional<int> id(std::size_t heading);
  // Returns the value of a field. Reports a fault if it is neither "0" nor "1".
  bool flag(std::size_t heading);
  // Reports a fault if `name` is empty. `kind` and `the_id` name the thing: "The zone", "40".
  void require_name(const std::string& name, const char* kind, const std::string& the_id);
  // Reports a fault if there is a line `before` with the same id.
  void check_duplicate(std::optional<long> before, const char* kind, const std::string& the_id,
                       const char* consequence);
  // Adds a hint if ids that are indexes of a table have large gaps. `kind` is a noun with its
  // article, such as "the zone".
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
  CsvLine current_row;
  std::vector<std::size_t> columns; // the columns of the headings, if has_headings
  std::map<std::string, std::size_t, std::less<>> heading_columns;
  bool headings_pending = true;
  bool has_headings = true;          // whether no required heading is missing
  bool has_mark = false;             // whether a byte-order mark precedes the headings
  bool has_reported_returns = false; // whether carriage returns have been reported
  bool is_sound = true;              // whether all lines so far could be read
  bool has_rows = false;
  long line_number = 0;
};
