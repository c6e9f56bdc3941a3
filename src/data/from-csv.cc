#include "data/from-csv.h"

#include "core/markup.h"
#include "core/report.h"
#include "data/csv-line.h"
#include "data/data-file.h"

#include <algorithm>
#include <cstdio>
#include <utility>

FromCSV::Def::Def(const std::vector<Glib::ustring>& the_labels, const std::vector<int>& the_values)
    : labels(the_labels), values(the_values)
{
}

FromCSV::FromCSV() = default;
FromCSV::~FromCSV() = default;

bool FromCSV::is_valid() const
{
  return valid;
}

RetCode FromCSV::read_file(std::string path)
{
  std::ifstream in = open_data_file(path);
  if (!in.is_open()) {
    printf("Failed to open %s!\n", path.c_str());
    return RET_FAILURE;
  }
  filename = std::move(path);

  const BotchedField botched = [this](std::size_t column, const Glib::ustring& text) {
    printf("%s line %d column %zu has botched quoting: %s\n", filename.c_str(), line_number, column,
           text.c_str());
  };
  bool heading_pending = headings.empty();
  FileLines lines(in);
  std::string_view line;
  CsvLine row;
  line_number = 0;
  while (lines.next(line)) {
    ++line_number;
    if (line.empty())
      continue;
    row.split(line, botched);
    const RetCode result =
        heading_pending ? process_headings(row.fields()) : process_row(row.fields());
    if (result != RET_SUCCESS)
      return result;
    heading_pending = false;
  }
  if (lines.excess() != FileLines::Excess::NONE)
    return refuse_excess(lines.excess());
  if (in.bad()) {
    printf("Failed to read %s!\n", filename.c_str());
    return RET_FAILURE;
  }
  return process_line({});
}

RetCode FromCSV::refuse_excess(FileLines::Excess excess) const
{
  const Glib::ustring name = escape_markup(filename);
  if (excess == FileLines::Excess::FILE_SIZE)
    return error(RET_FAILURE, "Data file error: %s has more than %zu bytes", name.c_str(),
                 largest_data_file);
  return error(RET_FAILURE, "Data file error: %s line %d has more than %zu bytes", name.c_str(),
               line_number + 1, longest_data_line);
}

RetCode FromCSV::process_row(const std::vector<Glib::ustring>& fields)
{
  const RetCode result = check_columns(line_number, fields);
  if (result != RET_SUCCESS)
    return result;
  // A duplicate heading refers to its last column, but the expected number of fields is the
  // number of different headings.
  if (last_column >= fields.size() && !columns.empty()) {
    complain_of_row("a heading appears twice and the row has no such column");
    return RET_SUCCESS;
  }
  return process_line(fields);
}

RetCode FromCSV::process_headings(const std::vector<Glib::ustring>& the_headings)
{
  if (&the_headings != &headings)
    headings = the_headings;
  return RET_SUCCESS;
}

RetCode FromCSV::check_columns(int line, const std::vector<Glib::ustring>& fields)
{
  if (fields.size() == column_index.size())
    return RET_SUCCESS;
  return error(RET_FAILURE, "Data file error: %s line %d has %d columns rather than %d",
               escape_markup(filename).c_str(), line, static_cast<int>(fields.size()),
               static_cast<int>(column_index.size()));
}

RetCode FromCSV::verify_headings(const std::vector<Glib::ustring>& the_headings,
                                 const char* const* expected)
{
  for (std::size_t i = 0; i < the_headings.size(); ++i)
    column_index[the_headings[i]] = static_cast<unsigned int>(i);

  RetCode result = RET_SUCCESS;
  heading_names = expected;
  columns.clear();
  last_column = 0;
  for (; *expected; ++expected) {
    const auto found = column_index.find(*expected);
    if (found == column_index.end()) {
      printf("missing heading \"%s\"\n", *expected);
      result = RET_MISSING_HEADING;
      continue;
    }
    columns.push_back(found->second);
    last_column = std::max(last_column, found->second);
  }
  return result;
}

bool FromCSV::refuse_id(int id, const char* what) const
{
  complain_of_row((std::string(what) + " " + std::to_string(id) + " is out of range").c_str());
  return false;
}

bool FromCSV::allow_gap(std::size_t length)
{
  if (length <= gaps_left) {
    gaps_left -= length;
    return true;
  }
  complain_of_row("it leaves too wide a gap in the numbering");
  return false;
}

void FromCSV::complain_of_row(const char* reason) const
{
  if (debug_level >= -1)
    printf("%s line %d is skipped: %s\n", filename.c_str(), line_number, reason);
}

void FromCSV::complain_of_number(std::size_t expected_index, const char* text, int kept) const
{
  if (debug_level >= -1)
    printf("%s line %d: %s %s does not fit and is kept as %d\n", filename.c_str(), line_number,
           heading_names[expected_index], text, kept);
}
