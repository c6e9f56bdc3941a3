#pragma once

#include "data/directory-lock.h"

#include <filesystem>
#include <system_error>

// A backup of the directory of local data, made before an archive is unpacked in it.
// The backup holds the original entries, links included. What stays in the directory is
// a copy of them that has no links, pipes or devices: tar cannot write through a link
// that an earlier archive left, nor wait for a pipe. Copies of files are hard links
// where that is possible; tar replaces files and never writes into them.
//
// The backup lies beside the directory, not in it, where tar writes no entry of an
// archive: tar refuses names with ".." and makes links last. So no archive can forge or
// change a backup. It survives the end of the program; recover() then restores it.
class DataBackup
{
public:
  // The file that is unpacked. It belongs to no data set and is not backed up.
  static const char* const archive_name;

  // Restores what an earlier install left to restore, and backs up `directory`. Does
  // nothing if that is no directory.
  explicit DataBackup(std::filesystem::path directory);
  // Restores the directory unless discard() has succeeded.
  ~DataBackup();
  DataBackup(const DataBackup&) = delete;
  DataBackup& operator=(const DataBackup&) = delete;

  // Why there is no backup: nothing may be unpacked then. `device_or_resource_busy` if
  // another program is installing data.
  std::error_code failure() const { return failed; }
  // The directory of the backup, for messages.
  std::filesystem::path place() const;
  // To be called once the archive is unpacked: flushes the new data to the disk and
  // removes the backup. Top-level entries that tar has not replaced, such as a user's own
  // link, return to their place. After a failure the backup still counts.
  std::error_code discard();

  // Restores the directory if a program was ended while it installed data there, unless
  // the newer data are complete by now. Returns the directory to read the local data
  // from: `directory`/data-files, or the backup of it if that cannot be restored, and
  // while another program, or the commands of one that was ended, are still unpacking.
  static std::filesystem::path recover(const std::filesystem::path& directory);

private:
  const std::filesystem::path directory;
  const DirectoryLock lock;
  std::error_code failed;
};
