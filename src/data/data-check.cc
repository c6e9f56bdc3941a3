#include "data/data-check.h"

#include "core/text.h"
#include "data/abundance-choices.h"
#include "data/csv-line.h"
#include "data/data-defs.h"
#include "data/data-file-info.h"
#include "data/data-file.h"
#include "data/data-params.h"
#include "data/file-lines.h"
#include "data/file-tree.h"
#include "data/habitat-info.h"
#include "data/region-info.h"
#include "data/species-view-info.h"
#include "data/species-views.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <string_view>
#include <system_error>
#include <vector>

namespace fs = std::filesystem;

namespace {

// Returns whether DataFileInfo reads the file without a message.
bool is_plain_metadata(const std::string& path)
{
  std::ifstream in = open_data_file(path);
  FileLines lines(in);
  for (std::string_view line; lines.next(line);) {
    const bool is_other_version = begins_with(line, "version=") && line != "version=1";
    if (is_other_version || (!line.empty() && line.find('=') == std::string_view::npos))
      return false;
  }
  return lines.excess() == FileLines::Excess::NONE;
}

// Returns whether the file has headings and FromCSV finds the expected number of fields in
// each row.
bool has_even_rows(const std::string& path)
{
  std::ifstream in = open_data_file(path);
  FileLines lines(in);
  CsvLine row;
  std::size_t width = 0; // 0 until the headings have been read
  for (std::string_view line; lines.next(line);) {
    if (line.empty())
      continue;
    row.split(line);
    const auto& fields = row.fields();
    if (width == 0)
      width = std::set<Glib::ustring>(fields.begin(), fields.end()).size();
    else if (fields.size() != width)
      return false;
  }
  return width > 0 && lines.excess() == FileLines::Excess::NONE;
}

bool has_even_tables(const std::string& dir)
{
  std::error_code failure;
  for (const auto& entry : fs::directory_iterator(dir, failure)) {
    if (entry.path().extension() == ".csv" && !has_even_rows(entry.path().string()))
      return false;
  }
  return !failure;
}

// Returns whether tar has replaced a file and finished writing it. As its last step, tar sets the
// file's time to the time in the archive.
bool is_replaced(const fs::path& original, const fs::path& file, fs::file_time_type begun)
{
  std::error_code failure;
  const bool is_original = is_there(original) && fs::equivalent(original, file, failure);
  return !is_original && fs::last_write_time(file, failure) < begun && !failure;
}

} // namespace

std::string data_timestamp(const std::string& dir)
{
  if (!is_plain_metadata(dir + DataFileInfo::get_filename()))
    return {};
  const DataFileInfo info(dir);
  return info.valid ? info.timestamp : std::string();
}

bool is_complete_data_set(const std::string& dir)
{
  if (data_timestamp(dir).empty() || !has_even_tables(dir))
    return false;
  RegionInfo regions(dir);
  return regions.is_valid() && DataDefs(dir).is_valid() && DataParams(dir).is_valid() &&
         HabitatInfo(dir).is_valid() && AbundanceChoices(dir).is_valid() &&
         SpeciesViewInfo(dir, &regions).is_valid() && SpeciesViews(dir).is_valid();
}

bool is_complete_newer_set(const fs::path& data, const fs::path& kept, fs::file_time_type begun)
{
  if (data_timestamp(data.string() + "/") <= data_timestamp(kept.string() + "/"))
    return false;
  std::error_code failure;
  const std::vector<fs::path> originals = names_in(kept, failure);
  if (failure)
    return false;
  const std::vector<fs::path> names = names_in(data, failure);
  if (failure)
    return false;
  const auto is_missing = [&](const fs::path& name) { return !is_there(data / name); };
  const auto is_finished = [&](const fs::path& name) {
    return fs::is_directory(fs::symlink_status(data / name, failure)) ||
           is_replaced(kept / name, data / name, begun);
  };
  return std::none_of(originals.begin(), originals.end(), is_missing) &&
         std::all_of(names.begin(), names.end(), is_finished) &&
         is_complete_data_set(data.string() + "/");
}
