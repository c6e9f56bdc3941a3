#include "data/reference-data.h"

#include "core/report.h"
#include "data/abundance-choices.h"
#include "data/data-backup.h"
#include "data/data-defs.h"
#include "data/data-file-info.h"
#include "data/data-params.h"
#include "data/habitat-info.h"
#include "data/region-info.h"
#include "data/species-view-info.h"
#include "data/species-views.h"

#include <giomm/file.h>
#include <glibmm/error.h>
#include <glibmm/miscutils.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <vector>

namespace {

// Returns the directory of the newer data set, or an empty text if neither is valid. If both
// have the same timestamp, returns the user's own.
std::string choose_data_dir(const std::string& local_dir, const std::string& built_in_dir)
{
  const DataFileInfo local(local_dir);
  const DataFileInfo built_in(built_in_dir);
  if (local.valid && local.timestamp >= built_in.timestamp) {
    printf("Using data in %s (%s).\n", local_dir.c_str(), local.timestamp.c_str());
    return local_dir;
  }
  if (local.valid) {
    printf("Hmm, data in %s is older (%s) than data in %s (%s).\n", local_dir.c_str(),
           local.timestamp.c_str(), built_in_dir.c_str(), built_in.timestamp.c_str());
    return built_in_dir;
  }
  if (built_in.valid) {
    printf("No data in %s; using data in %s (%s).\n", local_dir.c_str(), built_in_dir.c_str(),
           built_in.timestamp.c_str());
    return built_in_dir;
  }
  puts("Oh no!  We have no valid data!!");
  return {};
}

// Returns a new table, valid or not, which lives until the process ends: open windows
// continue to use the tables that they were created with.
template<typename Table>
Table* kept_table(const std::string& dir)
{
  static auto& tables = *new std::vector<std::unique_ptr<Table>>();
  tables.push_back(std::make_unique<Table>(dir));
  return tables.back().get();
}

// Stores a new table, valid or not. The previous table stays alive.
template<typename Table>
bool load(Table*& table, const std::string& dir)
{
  table = kept_table<Table>(dir);
  return table->is_valid();
}

} // namespace

RetCode read_data_set(const std::string& dir, ReferenceData& data)
{
  data.data_file_info = kept_table<DataFileInfo>(dir);
  if (!data.data_file_info->valid || !load(data.data_defs, dir) || !load(data.data_params, dir) ||
      !load(data.region_info, dir) || !load(data.habitat_info, dir) ||
      !load(data.abundance_choices, dir))
    return RET_FAILURE;

  SpeciesViewInfo view_info(dir, data.region_info);
  if (!view_info.is_valid() || !load(data.species_views, dir))
    return RET_FAILURE;
  data.species_views->view_subregions.swap(view_info.view_subregions);
  return RET_SUCCESS;
}

RetCode read_newest_data_set(std::string& local_data_dir, ReferenceData& data)
{
  const std::string own_dir = prepare_local_data_dir(local_data_dir) + "/data-files";
  const std::string local_dir = DataBackup::recover(local_data_dir).string();
  const std::string dir = choose_data_dir(local_dir + "/", "data-files/");
  if (dir.empty())
    return RET_FAILURE;
  const RetCode result = read_data_set(dir, data);
  // In the meantime, another program may have finished its install and removed its backup.
  const bool has_gone = local_dir != own_dir && !std::filesystem::exists(local_dir);
  return result != RET_SUCCESS && has_gone ? read_newest_data_set(local_data_dir, data) : result;
}

std::string prepare_local_data_dir(std::string& local_data_dir)
{
  if (local_data_dir.empty())
    local_data_dir = Glib::get_user_config_dir() + "/MAVO-Survey";
  const auto dir = Gio::File::create_for_path(local_data_dir);
  if (dir->query_file_type() == Gio::FILE_TYPE_NOT_KNOWN) {
    try {
      dir->make_directory_with_parents();
    } catch (const Glib::Error&) {
      // Without the directory there is no local copy, and the built-in one is used.
    }
  }
  if (debug_level > 0)
    printf("local_data_dir: %s\n", local_data_dir.c_str());
  return local_data_dir;
}
