#include "data/data-file-info.h"
#include "data/data-file.h"
#include "data/file-lines.h"

#include <glibmm/date.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>

#include "cli/checked-data-set.h"
#include "cli/data-checks.h"
#include "cli/table-check.h"

namespace {

// Checks the lines `key=value` in data-file-info.txt.
class MetadataCheck
{
public:
  explicit MetadataCheck(CheckedDataSet& the_set) : set(the_set) { set.files.insert(file); }
  void run();

private:
  void check_lines(std::istream& in);
  void check_line(std::string_view line);
  void check_excess(const FileLines& lines);
  void check_timestamp();
  void fault(DataRule rule, const std::string& consequence)
  {
    set.faults.add(rule, file, line_number, consequence);
  }
  void file_fault(DataRule rule, const std::string& consequence)
  {
    set.faults.add(rule, file, {}, consequence);
  }

  struct Entry {
    std::string value;
    long line;
  };

  CheckedDataSet& set;
  const std::string file = DataFileInfo::get_filename();
  std::map<std::string, Entry> entries; // by key
  long line_number = 0;
};

void MetadataCheck::run()
{
  std::ifstream in = open_data_file((std::filesystem::path(set.dir) / file).string());
  if (!in.is_open()) {
    file_fault(DataRule::FILE_MISSING,
               "The file is missing, cannot be read or is not a regular file: "
               "the program does not use the data set");
    return;
  }
  check_lines(in);
  for (const char* const key : {"timestamp", "updated"}) {
    if (entries[key].value.empty())
      file_fault(DataRule::METADATA_INCOMPLETE,
                 std::string(key) + " is missing: the program does not use the data set");
  }
  check_timestamp();
}

void MetadataCheck::check_lines(std::istream& in)
{
  FileLines lines(in);
  for (std::string_view line; lines.next(line);) {
    ++line_number;
    if (!line.empty())
      check_line(line);
  }
  check_excess(lines);
}

void MetadataCheck::check_excess(const FileLines& lines)
{
  if (lines.excess() == FileLines::Excess::FILE_SIZE) {
    file_fault(DataRule::FILE_TOO_LARGE, "The file has more than " +
                                             std::to_string(largest_data_file) +
                                             " bytes: the program does not use the data set");
  } else if (lines.excess() == FileLines::Excess::LINE_LENGTH) {
    ++line_number;
    fault(DataRule::LINE_TOO_LONG, "The line has more than " + std::to_string(longest_data_line) +
                                       " bytes: the program does not use the data set");
  }
}

void MetadataCheck::check_line(std::string_view line)
{
  const std::size_t equals = line.find('=');
  if (equals == std::string_view::npos) {
    fault(DataRule::METADATA_LINE, "The line has no \"=\": the program ends at each start");
    return;
  }
  const std::string key(line.substr(0, equals));
  const std::string value(line.substr(equals + 1));
  if (key == "version") {
    if (value != "1") {
      fault(DataRule::METADATA_VERSION, "The version is " + quoted(value) +
                                            ", not \"1\": each start shows an error that asks for "
                                            "a newer program");
    }
  } else if (key == "timestamp" || key == "updated") {
    entries[key] = {value, line_number};
  } else {
    fault(DataRule::METADATA_KEY, "The program ignores the unknown key " + quoted(key));
  }
}

// Returns whether the text is a time: year, month, day, hour, minute and second.
bool is_timestamp(const std::string& text)
{
  if (text.size() != 14 || text.find_first_not_of("0123456789") != std::string::npos)
    return false;
  const auto part = [&](std::size_t at, std::size_t size) {
    return std::atoi(text.substr(at, size).c_str());
  };
  return g_date_valid_dmy(static_cast<GDateDay>(part(6, 2)), static_cast<GDateMonth>(part(4, 2)),
                          static_cast<GDateYear>(part(0, 4))) != 0 &&
         part(8, 2) < 24 && part(10, 2) < 60 && part(12, 2) < 60;
}

void MetadataCheck::check_timestamp()
{
  const Entry& timestamp = entries["timestamp"];
  if (timestamp.value.empty() || is_timestamp(timestamp.value))
    return;
  line_number = timestamp.line;
  fault(DataRule::TIMESTAMP_FORM, "The timestamp " + quoted(timestamp.value) +
                                      " is not a date and time of 14 digits: the program may "
                                      "prefer an older set to a newer one");
}

} // namespace

void check_metadata(CheckedDataSet& set)
{
  MetadataCheck(set).run();
}
