#pragma once

#include "core/number.h"
#include "core/ret-code.h"
#include "data/file-lines.h"

#include <glibmm/ustring.h>

#include <map>
#include <string>
#include <vector>

// A table read from a file of comma-separated text. A reader's constructor
// reads its file; is_valid() then tells whether the table is whole. A reader
// that is not valid must not be used.
class FromCSV
{
public:
  // A list of choices: what the user sees and the value stored for it, in step.
  struct Def {
    Def() = default;
    Def(const std::vector<Glib::ustring>& the_labels, const std::vector<int>& the_values);

    std::vector<Glib::ustring> labels;
    std::vector<int> values;
  };

  // Ids index tables, so a negative or a larger one is refused as damaged data:
  // a single row could otherwise take all of the machine's memory.
  static constexpr int max_id = 99'999;

  FromCSV();
  FromCSV(const FromCSV&) = delete;
  FromCSV& operator=(const FromCSV&) = delete;
  virtual ~FromCSV();

  virtual bool is_valid() const;
  // Hands every line of the file at `path` to the reader, then an empty vector.
  // Stops at the first result other than RET_SUCCESS and returns it.
  virtual RetCode read_file(std::string path);
  // One data line, or the end of the data if `fields` is empty.
  virtual RetCode process_line(const std::vector<Glib::ustring>& fields) = 0;
  virtual RetCode process_headings(const std::vector<Glib::ustring>& the_headings);
  virtual RetCode check_columns(int line, const std::vector<Glib::ustring>& fields);
  // `expected` ends with a null pointer and outlives the reading. Fills `columns` in its
  // order.
  virtual RetCode verify_headings(const std::vector<Glib::ustring>& the_headings,
                                  const char* const* expected);

  bool valid = false;
  Glib::ustring filename;                             // of the file being read, for messages
  std::vector<Glib::ustring> headings;                // stays empty in all readers
  std::map<Glib::ustring, unsigned int> column_index; // its size is the width of a data line

protected:
  // The text of the heading that stands at `expected_index` in the reader's
  // list of expected headings; looked up once a file.
  const Glib::ustring& field(const std::vector<Glib::ustring>& fields,
                             std::size_t expected_index) const
  {
    return fields[columns[expected_index]];
  }
  // The number of a field, in the bits that `Kept` has. Complains on standard
  // output of a number that does not fit.
  template<typename Kept = int>
  Kept number(const std::vector<Glib::ustring>& fields, std::size_t expected_index) const
  {
    const char* const text = field(fields, expected_index).c_str();
    const auto kept = static_cast<Kept>(to_int(text));
    if (kept != to_int64(text))
      complain_of_number(expected_index, text, kept);
    return kept;
  }
  // Whether `id` can index a table; complains on standard output if not, so
  // that the caller can skip the row. `what` names the column.
  bool usable_id(int id, const char* what) const
  {
    return (id >= 0 && id <= max_id) || refuse_id(id, what);
  }
  // Whether a row may leave `length` unused places before its own. All rows of
  // a file share one allowance, so that a small file cannot take much memory.
  // Complains on standard output if not, so that the caller can skip the row.
  bool allow_gap(std::size_t length);

private:
  RetCode process_row(const std::vector<Glib::ustring>& fields);
  // Shows which limit the file exceeds; line_number is that of the last whole line.
  RetCode refuse_excess(FileLines::Excess excess) const;
  bool refuse_id(int id, const char* what) const; // gives false
  void complain_of_row(const char* reason) const;
  void complain_of_number(std::size_t expected_index, const char* text, int kept) const;

  const char* const* heading_names = nullptr; // what verify_headings() was given
  std::vector<unsigned int> columns;          // of these headings, in their order
  unsigned int last_column = 0;               // the largest of them
  std::size_t gaps_left = 1'000'000;
  int line_number = 0; // of the line in hand, from 1; blank lines count
};
