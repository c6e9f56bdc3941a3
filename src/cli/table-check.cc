#include "cli/table-check.h"

#include "core/number.h"
#include "data/data-file.h"
#include "data/file-lines.h"
#include "data/from-csv.h"

#include <glib.h>

#include <algorithm>
#include <filesystem>
#include <utility>

namespace {

constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";

bool is_digit(char c)
{
  return c >= '0' && c <= '9';
}

// Returns whether the text is a whole number without any other characters.
bool is_number(const std::string& text)
{
  const char* at = text.c_str();
  while (g_ascii_isspace(*at))
    ++at;
  if (*at == '-' || *at == '+')
    ++at;
  const char* const digits = at;
  while (is_digit(*at))
    ++at;
  const bool has_digits = at != digits;
  while (g_ascii_isspace(*at))
    ++at;
  return has_digits && at == text.c_str() + text.size();
}

std::size_t count_botched(const std::string& line)
{
  std::size_t count = 0;
  CsvLine().split(line, [&](std::size_t, const Glib::ustring&) { ++count; });
  return count;
}

// Returns whether a quoted field lacks its closing quote. `botched` is the number of fields with
// botched quoting in the line. Only in an open field does an additional quote at the end of the
// line close the field, so that text after that quote is botched.
bool has_open_quote(std::string_view line, std::size_t botched)
{
  if (line.find('"') == std::string_view::npos)
    return false;
  std::string text(line);
  text.erase(text.find_last_not_of('\\') + 1); // a backslash there would escape the quote
  return count_botched(text + "\"x") > botched;
}

} // namespace

std::string quoted(const std::string& text)
{
  constexpr std::size_t most = 60;
  const Glib::ustring valid = Glib::ustring(text).make_valid();
  return "\"" + (valid.size() <= most ? valid.raw() : valid.substr(0, most).raw() + "…") + "\"";
}

TableCheck::TableCheck(CheckedDataSet& the_set, std::string the_file,
                       const char* const* the_headings)
    : set(the_set), file(std::move(the_file)), headings(the_headings)
{
  set.files.insert(file);
}

void TableCheck::run()
{
  const bool is_inside = file.find('/') == std::string::npos; // a region code can contain a path
  std::ifstream in;
  if (is_inside)
    in = open_data_file((std::filesystem::path(set.dir) / file).string());
  if (!in.is_open()) {
    is_sound = false;
    file_fault(DataRule::FILE_MISSING,
               "The file is missing, cannot be read or is not a regular file: the program ends at "
               "each start");
  } else {
    check_lines(in);
  }
  check_end();
}

void TableCheck::check_lines(std::istream& in)
{
  FileLines lines(in);
  for (std::string_view line; lines.next(line);) {
    ++line_number;
    if (!line.empty())
      check_line(line);
  }
  check_excess(lines);
  if (in.bad()) {
    is_sound = false;
    file_fault(DataRule::FILE_MISSING, "The file cannot be read: the program ends at each start");
  }
  if (is_sound && !has_rows)
    file_fault(DataRule::TABLE_EMPTY,
               "The file has no rows: the program has none of what the file should contain");
}

void TableCheck::check_excess(const FileLines& lines)
{
  if (lines.excess() == FileLines::Excess::NONE)
    return;
  is_sound = false;
  if (lines.excess() == FileLines::Excess::FILE_SIZE) {
    file_fault(DataRule::FILE_TOO_LARGE, "The file has more than " +
                                             std::to_string(largest_data_file) +
                                             " bytes: the program ends at each start");
    return;
  }
  ++line_number;
  fault(DataRule::LINE_TOO_LONG, "The line has more than " + std::to_string(longest_data_line) +
                                     " bytes: the program ends at each start");
}

void TableCheck::check_line(std::string_view line)
{
  check_bytes(line);
  std::size_t botched = 0;
  current_row.split(line, [&, this](std::size_t, const Glib::ustring& field) {
    ++botched;
    fault(DataRule::QUOTING_BOTCHED,
          "Text follows a closing quote: users see the field with its quotes, " + quoted(field));
  });
  check_quotes(line, botched);
  if (headings_pending)
    check_headings();
  else
    check_fields();
  headings_pending = false;
}

void TableCheck::check_bytes(std::string_view line)
{
  if (line.back() == '\r' && !std::exchange(has_reported_returns, true))
    fault(DataRule::LINE_ENDS, "Lines end with a carriage return: a row whose last field is empty "
                               "then has too few fields");
  if (!g_utf8_validate_len(line.data(), line.size(), nullptr))
    fault(DataRule::ENCODING, "The line is not valid UTF-8: users see replacement characters");
  has_mark = has_mark || (headings_pending && line.substr(0, 3) == byte_order_mark);
}

void TableCheck::check_quotes(std::string_view line, std::size_t botched)
{
  if (has_open_quote(line, botched))
    fault(DataRule::QUOTE_OPEN,
          "A closing quote is missing: the field extends to the end of the line");
}

void TableCheck::check_headings()
{
  for (std::size_t column = 0; column < current_row.fields().size(); ++column) {
    const std::string& heading = current_row.fields()[column].raw();
    if (!heading_columns.insert_or_assign(heading, column).second) {
      fault(DataRule::HEADING_TWICE, "The heading " + quoted(heading) +
                                         " appears twice: the program reads the last column with "
                                         "that name and expects one field less in each row");
    }
  }
  for (const char* const* heading = headings; *heading; ++heading) {
    const auto found = heading_columns.find(*heading);
    if (found != heading_columns.end()) {
      columns.push_back(found->second);
      continue;
    }
    is_sound = has_headings = false;
    if (has_mark && heading_columns.count(std::string(byte_order_mark) + *heading) > 0) {
      fault(DataRule::BYTE_ORDER_MARK,
            "A byte-order mark precedes the heading " + quoted(*heading) +
                ": the program does not find the heading and ends at each start");
    } else {
      fault(DataRule::HEADING_MISSING,
            "The heading " + quoted(*heading) + " is missing: the program ends at each start");
    }
  }
}

void TableCheck::check_fields()
{
  has_rows = true;
  if (current_row.fields().size() != heading_columns.size()) {
    is_sound = false;
    fault(DataRule::ROW_WIDTH, "The row has " + std::to_string(current_row.fields().size()) +
                                   " fields instead of " + std::to_string(heading_columns.size()) +
                                   ": the program ends at each start");
    return;
  }
  const bool has_all_columns = std::all_of(columns.begin(), columns.end(), [this](std::size_t c) {
    return c < current_row.fields().size(); // a duplicate heading can be beyond the end of the row
  });
  if (has_headings && has_all_columns)
    check_row();
  else
    is_sound = false;
}

void TableCheck::fault(DataRule rule, std::string consequence)
{
  set.faults.add(rule, file, line_number, std::move(consequence));
}

void TableCheck::file_fault(DataRule rule, std::string consequence)
{
  set.faults.add(rule, file, {}, std::move(consequence));
}

const std::string& TableCheck::text(std::size_t heading) const
{
  return current_row.fields()[columns[heading]].raw();
}

const std::string& TableCheck::optional_text(const char* heading) const
{
  static const std::string none;
  const auto found = heading_columns.find(heading);
  return found == heading_columns.end() || found->second >= current_row.fields().size()
             ? none
             : current_row.fields()[found->second].raw();
}

void TableCheck::check_digits(std::size_t heading, int kept)
{
  if (!is_number(text(heading))) {
    fault(DataRule::NUMBER_INVALID,
          std::string(headings[heading]) + " is " + quoted(text(heading)) +
              ", which is not a whole number and counts as " + std::to_string(kept));
  }
}

std::optional<int> TableCheck::number(std::size_t heading, int lowest, int highest)
{
  const std::int64_t value = to_int64(text(heading).c_str());
  if (value < lowest || value > highest) {
    fault(DataRule::NUMBER_TOO_LARGE,
          std::string(headings[heading]) + " is " + quoted(text(heading)) +
              ", which is not between " + std::to_string(lowest) + " and " +
              std::to_string(highest) + ": the program uses another number");
    return {};
  }
  check_digits(heading, static_cast<int>(value));
  return static_cast<int>(value);
}

std::optional<int> TableCheck::id(std::size_t heading)
{
  const int value = to_int(text(heading));
  if (value < 0 || value > FromCSV::max_id) {
    fault(DataRule::ID_OUT_OF_RANGE,
          std::string(headings[heading]) + " " + quoted(text(heading)) + " is not between 0 and " +
              std::to_string(FromCSV::max_id) + ": the program skips the row");
    return {};
  }
  check_digits(heading, value);
  return value;
}

bool TableCheck::flag(std::size_t heading)
{
  const std::string& value = text(heading);
  if (value != "0" && value != "1")
    fault(DataRule::FLAG_UNCLEAR, std::string(headings[heading]) + " is " + quoted(value) +
                                      ", which counts as 0: only 1 sets a flag");
  return value == "1";
}

void TableCheck::require_name(const std::string& name, const char* kind, const std::string& the_id)
{
  if (name.find_first_not_of(' ') == std::string::npos)
    fault(DataRule::NAME_MISSING, std::string(kind) + " " + the_id +
                                      " has no name: users see an empty place or a made-up name");
}

void TableCheck::check_duplicate(std::optional<long> before, const char* kind,
                                 const std::string& the_id, const char* consequence)
{
  if (before)
    fault(DataRule::ID_DUPLICATE, std::string(kind) + " " + the_id + " is also in line " +
                                      std::to_string(*before) + ": " + consequence);
}

void TableCheck::check_gaps(const NumberedIds& ids, const char* kind)
{
  constexpr int wide = 1000;
  int last = 0;
  for (int id = 0; id < ids.end(); ++id) {
    if (!ids.has(id))
      continue;
    if (id - last > wide) {
      set.faults.add(DataRule::IDS_SPARSE, file, ids.line_of(id),
                     std::to_string(id - last - 1) + " numbers before " + kind + " " +
                         std::to_string(id) + " are not used: each takes memory");
    }
    last = id;
  }
}
