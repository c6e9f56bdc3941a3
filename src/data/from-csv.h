#pragma once

#include "core/number.h"
#include "core/ret-code.h"
#include "data/file-lines.h"

#include <glibmm/ustring.h>

#include <map>
#include <string>
#include <vector>

// The base class of tables that are read from files of comma-separated text. The
// constructor of a derived class reads its file. is_valid() then returns whether the table is
// complete. An invalid table must not be used.
class FromCSV
{
public:
  // A list of choices: the labels that the user sees and, at the same indices, the values
  // that surveys store.
  struct Def {
    Def() = default;
    Def(const std::vector<Glib::ustring>& the_labels, const std::vector<int>& the_values);

    std::vector<Glib::ustring> labels;
    std::vector<int> values;
  };

  // The largest accepted id. Ids index tables, so a negative or larger id counts as damaged
  // data: otherwise a single row could exhaust the memory.
  static constexpr int max_id = 99'999;

  FromCSV();
  FromCSV(const FromCSV&) = delete;
  FromCSV& operator=(const FromCSV&) = delete;
  virtual ~FromCSV();

  // Returns whether the file was read without a failure.
  virtual bool is_valid() const;
  // Passes the headings to process_headings(), each data line to process_line(), and an
  // empty vector to process_line() at the end. Returns the first result other than
  // RET_SUCCESS and stops there. Returns RET_FAILURE if the file cannot be read or exceeds a
  // limit of data-file.h.
  virtual RetCode read_file(std::string path);
  // Processes one data line, or the end of the data if `fields` is empty.
  virtual RetCode process_line(const std::vector<Glib::ustring>& fields) = 0;
  // Processes the line of headings. Each table passes them to verify_headings() with the
  // headings that it needs.
  virtual RetCode process_headings(const std::vector<Glib::ustring>& the_headings);
  // Returns RET_SUCCESS if a row has the expected number of fields. Otherwise shows a message
  // with the number `line` and returns RET_FAILURE.
  virtual RetCode check_columns(int line, const std::vector<Glib::ustring>& fields);
  // Finds the columns of the `expected` headings. Returns RET_MISSING_HEADING if one of them is
  // missing. REQUIRES: `expected` ends with a null pointer and outlives the reading.
  virtual RetCode verify_headings(const std::vector<Glib::ustring>& the_headings,
                                  const char* const* expected);

  bool valid = false;
  Glib::ustring filename;                             // the file being read, for messages
  std::vector<Glib::ustring> headings;                // stays empty in all readers
  std::map<Glib::ustring, unsigned int> column_index; // its size is the number of fields of a row

protected:
  // Returns the field of a row under the heading that has `expected_index` in the list that
  // verify_headings() received.
  const Glib::ustring& field(const std::vector<Glib::ustring>& fields,
                             std::size_t expected_index) const
  {
    return fields[columns[expected_index]];
  }
  // Returns the number in a field, reduced to the bits of `Kept`. Prints a complaint to
  // standard output if the number does not fit.
  template<typename Kept = int>
  Kept number(const std::vector<Glib::ustring>& fields, std::size_t expected_index) const
  {
    const char* const text = field(fields, expected_index).c_str();
    const auto kept = static_cast<Kept>(to_int(text));
    if (kept != to_int64(text))
      complain_of_number(expected_index, text, kept);
    return kept;
  }
  // Returns whether `id` can index a table. If not, prints a complaint to standard output,
  // and the caller skips the row. `what` is the name of the column.
  bool usable_id(int id, const char* what) const
  {
    return (id >= 0 && id <= max_id) || refuse_id(id, what);
  }
  // Returns whether a row may leave `length` unused places before its own. All rows of a file
  // share one allowance, so that a small file cannot take much memory. If not, prints a
  // complaint to standard output, and the caller skips the row.
  bool allow_gap(std::size_t length);

private:
  RetCode process_row(const std::vector<Glib::ustring>& fields);
  // Reports which limit the file exceeds, and returns RET_FAILURE. REQUIRES: line_number is
  // that of the last complete line.
  RetCode refuse_excess(FileLines::Excess excess) const;
  bool refuse_id(int id, const char* what) const; // returns false
  void complain_of_row(const char* reason) const;
  void complain_of_number(std::size_t expected_index, const char* text, int kept) const;

  const char* const* heading_names = nullptr; // the argument of verify_headings()
  std::vector<unsigned int> columns;          // the columns of these headings, in their order
  unsigned int last_column = 0;               // the largest of `columns`
  std::size_t gaps_left = 1'000'000;
  int line_number = 0; // of the current line, from 1; blank lines count
};
