#include "data/data-backup.h"

#include "data/data-check.h"
#include "data/data-file.h"
#include "data/file-tree.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <utility>
#include <vector>

namespace fs = std::filesystem;

namespace {

// The paths of the local data and of the parts of their backup.
struct Places {
  explicit Places(const fs::path& directory);

  fs::path local;
  fs::path data;       // the data set
  fs::path backup;     // the directory of all paths below
  fs::path kept;       // the original entries, which are restored as long as this exists
  fs::path copies;     // copies without links, which replace the original entries
  fs::path old;        // the original entries, after newer ones have replaced them
  fs::path torn;       // an entry that is being removed
  fs::path not_linked; // exists if copies are not hard links
  fs::path former;     // the backup of earlier versions of the program
};

// Follows a link to the directory. The backup must be on the same file system as the
// directory, because rename() moves entries from one to the other.
Places::Places(const fs::path& directory) : local(directory)
{
  std::error_code failure;
  const fs::path real = fs::canonical(directory, failure);
  if (!failure)
    local = real;
  data = local / "data-files";
  backup = local.parent_path() / ("." + local.filename().string() + "-before-update");
  kept = backup / "kept";
  copies = backup / "copies";
  old = backup / "old";
  torn = backup / "torn";
  not_linked = backup / "not-linked";
  former = local / "former-data-files";
}

bool is_archive(const fs::path& directory, const fs::path& name)
{
  std::error_code ignored;
  return name == DataBackup::archive_name &&
         fs::is_regular_file(fs::symlink_status(directory / name, ignored));
}

// --- copying ---

std::error_code copy_entry(const Places& at, const fs::path& from, const fs::path& to);

std::error_code copy_file(const Places& at, const fs::path& from, const fs::path& to)
{
  std::error_code failure;
  fs::create_hard_link(from, to, failure);
  if (!failure)
    return {};
  fs::create_directory(at.not_linked, failure);
  fs::copy_file(from, to, failure);
  return failure;
}

// Copies the file to which a link points, so that a data file that the user stores elsewhere
// remains part of the set. Copies no other links.
std::error_code copy_target(const fs::path& from, const fs::path& to)
{
  std::error_code failure;
  const bool is_data_file = fs::is_regular_file(fs::status(from, failure)) &&
                            fs::file_size(from, failure) <= largest_data_file &&
                            access(from.c_str(), R_OK) == 0;
  failure.clear();
  if (is_data_file)
    fs::copy_file(from, to, failure);
  return failure;
}

// Skips a directory of another user that this user cannot read: tar runs as this user and cannot
// enter it either.
std::error_code copy_directory(const Places& at, const fs::path& from, const fs::path& to)
{
  open_up(from);
  std::error_code failure;
  const std::vector<fs::path> names = names_in(from, failure);
  if (failure == std::errc::permission_denied && !is_own_directory(from))
    return {};
  if (!failure)
    fs::create_directory(to, failure);
  for (const auto& name : names) {
    if (!failure)
      failure = copy_entry(at, from / name, to / name);
  }
  return failure;
}

std::error_code copy_entry(const Places& at, const fs::path& from, const fs::path& to)
{
  std::error_code failure;
  if (to.native().size() >= PATH_MAX) // an archive can have such names; data files never do
    return failure;
  switch (fs::symlink_status(from, failure).type()) {
  case fs::file_type::directory:
    return copy_directory(at, from, to);
  case fs::file_type::regular:
    return copy_file(at, from, to);
  case fs::file_type::symlink:
    return from.parent_path() == at.local ? failure : copy_target(from, to);
  default:
    return failure;
  }
}

// --- restoring ---

// Restores one original entry and replaces what is at its path.
std::error_code restore_entry(const Places& at, const fs::path& name)
{
  if (is_archive(at.local, name))
    return {}; // for example, a newer file has replaced a link
  std::error_code failure;
  remove_tree(at.torn);
  open_up(at.local / name); // a directory without write permission cannot be moved
  if (is_there(at.local / name))
    fs::rename(at.local / name, at.torn, failure);
  if (!failure)
    fs::rename(at.kept / name, at.local / name, failure);
  return failure;
}

// Restores the original entries. An entry that cannot be restored stays in the backup for
// the next attempt.
std::error_code restore_kept(const Places& at)
{
  std::error_code failure;
  const std::vector<fs::path> names = names_in(at.kept, failure);
  for (const auto& name : names) {
    if (!failure)
      failure = restore_entry(at, name);
  }
  if (failure)
    return failure;
  rmdir(at.data.c_str()); // only succeeds if it is empty: then there were no data
  if (!names.empty())
    std::printf("Restored the data in %s from a backup.\n", at.local.c_str());
  remove_tree(at.kept);
  return {};
}

// Removes the original entries that newer ones have replaced, and restores the others.
void remove_old(const Places& at)
{
  std::error_code failure;
  for (const auto& number : names_in(at.old, failure)) {
    for (const auto& name : names_in(at.old / number, failure)) {
      if (!is_there(at.local / name))
        fs::rename(at.old / number / name, at.local / name, failure);
    }
  }
  remove_tree(at.old);
}

// Marks the original entries as no longer needed: after this, they are not restored. An entry
// that could not be removed earlier, such as another user's directory, may be in the way.
std::error_code retire_kept(const Places& at)
{
  std::error_code failure;
  fs::create_directory(at.old, failure);
  int number = 0;
  while (is_there(at.old / std::to_string(number)))
    ++number;
  if (!failure)
    fs::rename(at.kept, at.old / std::to_string(number), failure);
  return failure;
}

bool is_newer_set_complete(const Places& at)
{
  std::error_code failure;
  const fs::file_time_type begun = fs::last_write_time(at.kept, failure);
  const fs::path original = at.kept / at.data.filename();
  return !failure && is_there(original) && !is_there(at.not_linked) &&
         is_complete_newer_set(at.data, original, begun);
}

// --- backups of earlier versions ---

fs::path unfinished(const fs::path& former)
{
  return former.string() + ".part";
}

// Removes a backup in the form of earlier versions. REQUIRES: there is a current backup. Before
// the program makes that, it restores any earlier backup, so this one is a forgery of an archive.
void remove_forged_backup(const Places& at)
{
  for (const auto& path : {at.former, unfinished(at.former)}) {
    if (is_own_directory(path))
      remove_tree(path);
  }
}

// Returns whether an earlier version of the program made this backup. It is empty if there
// were no data.
bool is_former_set(const fs::path& former)
{
  std::error_code failure;
  return is_own_directory(former) &&
         (fs::is_empty(former, failure) || !data_timestamp(former.string() + "/").empty());
}

std::error_code restore_former(const Places& at)
{
  if (is_own_directory(unfinished(at.former)))
    remove_tree(unfinished(at.former));
  if (!is_former_set(at.former))
    return {};
  std::error_code failure;
  const fs::file_time_type begun = fs::last_write_time(at.former, failure);
  if (!failure && is_complete_newer_set(at.data, at.former, begun)) {
    remove_tree(at.former);
    return {};
  }
  failure.clear();
  if (is_there(at.data))
    fs::rename(at.data, unfinished(at.former), failure);
  if (!failure && rmdir(at.former.c_str()) != 0)
    fs::rename(at.former, at.data, failure);
  if (!failure)
    std::printf("Restored the data in %s from a backup.\n", at.local.c_str());
  remove_tree(unfinished(at.former));
  return failure;
}

// --- entry points ---

// Ends an interrupted install: restores the original entries if they are still needed, and
// removes the rest of the backup.
std::error_code settle(const Places& at)
{
  if (!is_own_directory(at.backup))
    return restore_former(at);
  open_up(at.local);
  remove_forged_backup(at);
  if (is_there(at.kept)) {
    if (const std::error_code failure = restore_kept(at))
      return failure;
  }
  remove_old(at);
  for (const auto& path : {at.copies, at.torn, at.not_linked})
    remove_tree(path);
  rmdir(at.backup.c_str());
  return {};
}

// Like settle(), for an install that another program began and did not finish. If the data of
// this install are complete, keeps them instead of restoring the original entries.
std::error_code settle_interrupted(const Places& at)
{
  if (is_own_directory(at.backup) && is_there(at.kept) && is_newer_set_complete(at))
    retire_kept(at);
  return settle(at);
}

// Moves one original entry to the backup and puts its copy in its place.
std::error_code keep_entry(const Places& at, const fs::path& name)
{
  open_up(at.local / name);
  std::error_code failure;
  fs::rename(at.local / name, at.kept / name, failure);
  if (!failure && is_there(at.copies / name))
    fs::rename(at.copies / name, at.local / name, failure);
  return failure;
}

std::error_code make_places(const Places& at)
{
  std::error_code failure;
  for (const auto& path : {at.backup, at.copies, at.kept}) {
    if (!failure && mkdir(path.c_str(), S_IRWXU) != 0 && !is_own_directory(path))
      failure = {errno, std::system_category()};
  }
  if (!failure && !is_there(at.data)) // restore_kept() removes an empty one
    fs::create_directory(at.data, failure);
  return failure;
}

// Makes all copies before it moves the first entry, so that a failure changes nothing.
std::error_code back_up(const Places& at)
{
  std::error_code failure = make_places(at);
  if (failure)
    return failure;
  std::vector<fs::path> names;
  for (const auto& name : names_in(at.local, failure)) {
    if (!is_archive(at.local, name))
      names.push_back(name);
  }
  for (const auto& name : names) {
    if (!failure)
      failure = copy_entry(at, at.local / name, at.copies / name);
  }
  for (const auto& name : names) {
    if (!failure)
      failure = keep_entry(at, name);
  }
  remove_tree(at.copies);
  return failure;
}

bool leads_to_directory(const fs::path& path)
{
  std::error_code ignored;
  return fs::is_directory(path, ignored);
}

} // namespace

const char* const DataBackup::archive_name = "current-offline-data.tar.bz2";

DataBackup::DataBackup(fs::path directory_) : directory(std::move(directory_)), lock(directory)
{
  if (!leads_to_directory(directory))
    return;
  const Places at(directory);
  if (lock.is_busy())
    failed = std::make_error_code(std::errc::device_or_resource_busy);
  else
    failed = settle_interrupted(at);
  if (!failed)
    failed = back_up(at);
}

DataBackup::~DataBackup()
{
  if (leads_to_directory(directory) && !lock.is_busy())
    settle(Places(directory));
}

fs::path DataBackup::place() const
{
  return Places(directory).backup;
}

std::error_code DataBackup::discard()
{
  const Places at(directory);
  open_up(at.local);
  std::error_code failure = flush_tree(at.data);
  if (!failure)
    failure = retire_kept(at);
  return failure;
}

fs::path DataBackup::recover(const fs::path& directory)
{
  const Places at(directory);
  fs::path data = directory / at.data.filename();
  const DirectoryLock lock(directory);
  if (!lock.is_busy() && !settle_interrupted(at))
    return data;
  fs::path kept = at.kept / at.data.filename();
  if (is_own_directory(at.backup) && is_there(kept))
    return kept;
  return is_former_set(at.former) ? at.former : data;
}
