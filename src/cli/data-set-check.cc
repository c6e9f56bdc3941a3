#include "cli/data-set-check.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <system_error>

#include "cli/checked-data-set.h"
#include "cli/could-not-run.h"
#include "cli/data-checks.h"

namespace fs = std::filesystem;

namespace {

const std::array<const char*, 3> region_suffixes{"-family-info.csv", "-species-info.csv",
                                                 "-geog.csv"};

std::vector<std::string> names_in(const std::string& dir)
{
  std::vector<std::string> names;
  std::error_code failure;
  fs::directory_iterator entries(dir, failure);
  for (; !failure && entries != fs::directory_iterator(); entries.increment(failure))
    names.push_back(entries->path().filename().string());
  if (failure)
    throw CouldNotRun("cannot read " + dir + ": " + failure.message());
  std::sort(names.begin(), names.end());
  return names;
}

// Returns the region code in the name of a file, or an empty text if the file belongs to no
// region.
std::string region_of(const std::string& name)
{
  for (const std::string suffix : region_suffixes) {
    if (name.size() > suffix.size() &&
        name.compare(name.size() - suffix.size(), suffix.size(), suffix) == 0)
      return name.substr(0, name.size() - suffix.size());
  }
  return {};
}

// Adds the regions in the names of files if region-info.csv cannot be read completely.
void add_regions_of_files(CheckedDataSet& set, const std::vector<std::string>& names)
{
  if (set.survey_types.is_complete)
    return;
  for (const std::string& name : names) {
    const std::string region = region_of(name);
    if (!region.empty())
      set.regions[region];
  }
}

// Checks the files of a region that are required or exist. A code can contain slashes, but
// TableCheck does not open a file in another directory.
void check_region(CheckedDataSet& set, const std::string& code, bool is_named,
                  const std::vector<std::string>& names)
{
  using Check = void (*)(CheckedDataSet&, const std::string&);
  const std::array<Check, 3> checks{&check_families, &check_species, &check_zones};
  for (std::size_t i = 0; i < checks.size(); ++i) {
    const std::string name = code + region_suffixes[i];
    if (is_named || std::binary_search(names.begin(), names.end(), name))
      checks[i](set, code);
  }
}

void check_regions_and_their_files(CheckedDataSet& set, const std::vector<std::string>& names)
{
  check_regions(set);
  add_regions_of_files(set, names);
  for (const auto& [code, region] : set.regions)
    check_region(set, code, region.is_named, names);
}

void check_unused_files(CheckedDataSet& set, const std::vector<std::string>& names)
{
  if (!set.survey_types.is_complete)
    return; // a file may belong to an unknown region
  for (const std::string& name : names) {
    if (set.files.count(name) == 0)
      set.faults.add(DataRule::FILE_UNUSED, name, {},
                     "The file belongs to no region and no table: the program does not read it");
  }
}

} // namespace

std::vector<Finding> check_data_set(const std::string& dir)
{
  const std::vector<std::string> names = names_in(dir);
  CheckedDataSet set(dir);
  check_metadata(set);
  check_definitions(set);
  check_limits(set);
  check_regions_and_their_files(set, names);
  check_habitats(set);
  check_region_habitats(set);
  check_abundances(set);
  check_view_definitions(set);
  check_view_species(set);
  check_unused_files(set, names);
  return set.faults.take_sorted();
}
