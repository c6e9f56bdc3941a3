#include "csv-references.h"

#include <csv.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <limits> // libfccp needs it and does not include it
#include <memory>
#include <utility>

// The library's reading thread would hide a part of its cost.
#define CSV_IO_NO_THREAD
#include <libfccp/csv.h>

namespace {

template<std::size_t width>
using TextRow = std::array<std::string, width>;

template<std::size_t width, std::size_t... column, typename Function>
void for_each_row(const std::string& path, std::index_sequence<column...>, Function&& take_row)
{
  io::CSVReader<width, io::trim_chars<>, io::double_quote_escape<',', '"'>> reader(path);
  reader.next_line(); // the headings
  reader.set_header(std::to_string(column)...);
  TextRow<width> row;
  while (reader.read_row(row[column]...))
    take_row(row);
}

template<std::size_t width>
CsvRows counted(const std::string& path)
{
  CsvRows rows;
  for_each_row<width>(path, std::make_index_sequence<width>(), [&](const TextRow<width>& row) {
    ++rows.rows;
    for (const auto& text : row)
      rows.bytes += text.size();
  });
  return rows;
}

// No heading of these files has a comma.
std::size_t width_of(const std::string& path)
{
  std::ifstream in(path);
  std::string headings;
  std::getline(in, headings);
  return static_cast<std::size_t>(std::count(headings.begin(), headings.end(), ',')) + 1;
}

struct FileClose {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

// The callback of libcsv. `rows` is a CsvRows.
void count_field(void*, std::size_t length, void* rows)
{
  static_cast<CsvRows*>(rows)->bytes += length;
}

void count_row(int, void* rows)
{
  ++static_cast<CsvRows*>(rows)->rows;
}

} // namespace

CsvRows fccp_rows(const std::string& path)
{
  switch (width_of(path)) {
  case 2:
    return counted<2>(path);
  case 3:
    return counted<3>(path);
  case 4:
    return counted<4>(path);
  case 6:
    return counted<6>(path);
  case 7:
    return counted<7>(path);
  case 11:
    return counted<11>(path);
  }
  std::fprintf(stderr, "%s has another width\n", path.c_str());
  std::exit(2);
}

CsvRows libcsv_rows(const std::string& path)
{
  const std::unique_ptr<std::FILE, FileClose> file(std::fopen(path.c_str(), "r"));
  csv_parser parser;
  csv_init(&parser, 0);
  CsvRows headings;
  CsvRows rows;
  std::array<char, 65'536> block;
  // Parses the headings, up to the line feed, as a separate block.
  if (file && std::fgets(block.data(), block.size(), file.get()))
    csv_parse(&parser, block.data(), std::strlen(block.data()), count_field, count_row, &headings);
  while (const std::size_t length = std::fread(block.data(), 1, block.size(), file.get()))
    csv_parse(&parser, block.data(), length, count_field, count_row, &rows);
  csv_fini(&parser, count_field, count_row, &rows);
  csv_free(&parser);
  return rows;
}
