#include "cli/row-lines.h"

#include "core/number.h"
#include "data/csv-line.h"
#include "data/data-file.h"
#include "data/file-lines.h"

#include <glibmm/ustring.h>

#include <algorithm>
#include <string_view>
#include <utility>

namespace {

using Fields = std::vector<Glib::ustring>;

// Returns an id with numbers in a normal form. A file can have "07" for 7.
std::string normal_id(const std::string& id)
{
  const bool is_number = !id.empty() && g_ascii_isdigit(id.front());
  return is_number ? std::to_string(to_int(id)) : id;
}

// Returns the columns of the headings, or an empty list if one of them is missing.
std::vector<std::size_t> columns_of(const RowLines::Texts& headings, const Fields& fields)
{
  std::vector<std::size_t> columns;
  for (const std::string& heading : headings) {
    const auto field = std::find(fields.begin(), fields.end(), Glib::ustring(heading));
    if (field == fields.end())
      return {};
    columns.push_back(static_cast<std::size_t>(field - fields.begin()));
  }
  return columns;
}

std::string joined_ids(const std::vector<std::size_t>& columns, const Fields& fields)
{
  std::string ids;
  for (const std::size_t column : columns)
    ids += (column < fields.size() ? normal_id(fields[column].raw()) : "") + '\n';
  return ids;
}

} // namespace

RowLines::RowLines(std::string directory) : dir(std::move(directory)) {}

std::optional<long> RowLines::find(const std::string& file, const Texts& headings, const Texts& ids)
{
  const auto [index, is_new] = indexes.try_emplace({file, headings});
  if (is_new)
    index->second = read(file, headings);
  std::string joined;
  for (const std::string& id : ids)
    joined += normal_id(id) + '\n';
  const auto line = index->second.find(joined);
  return line == index->second.end() ? std::nullopt : std::optional<long>(line->second);
}

RowLines::Index RowLines::read(const std::string& file, const Texts& headings) const
{
  std::ifstream in = open_data_file(dir + file);
  FileLines lines(in);
  Index index;
  CsvLine row;
  std::vector<std::size_t> columns;
  long number = 0;
  for (std::string_view line; lines.next(line);) {
    ++number;
    if (line.empty())
      continue;
    row.split(line);
    if (columns.empty()) {
      columns = columns_of(headings, row.fields());
      if (columns.empty())
        break;
    } else {
      index.try_emplace(joined_ids(columns, row.fields()), number);
    }
  }
  return index;
}
