#pragma once

#include "data/directory-lock.h"

#include <filesystem>
#include <system_error>

// A backup of the directory of local data. The install makes it before it unpacks an archive
// there. The destructor restores the directory unless the install has succeeded.
//
// The backup contains the original entries, including links. Copies without links, pipes and
// devices replace them in the directory, so that tar can neither write through a link that
// an earlier archive left nor wait for a pipe. Copies of files are hard links where that is
// possible, because tar replaces files and never writes into them.
//
// The backup is beside the directory, where tar writes no entry of an archive: tar refuses
// names with ".." and makes links last. So no archive can forge or change a backup. The
// backup survives the end of the program; recover() then restores it.
class DataBackup
{
public:
  // The name of the downloaded archive. It is not part of a data set and is not backed up.
  static const char* const archive_name;

  // Restores the backup of an interrupted install, if there is one, and then backs up
  // `directory`. Does nothing if `directory` is not a directory.
  explicit DataBackup(std::filesystem::path directory);
  // Restores the directory unless discard() has succeeded, and removes the backup.
  ~DataBackup();
  DataBackup(const DataBackup&) = delete;
  DataBackup& operator=(const DataBackup&) = delete;

  // Returns the reason why the backup could not be made, or no error. After a failure, the
  // caller must not unpack anything. The reason is `device_or_resource_busy` if another program
  // is installing data.
  std::error_code failure() const { return failed; }
  // Returns the directory of the backup, for messages.
  std::filesystem::path place() const;
  // Accepts the unpacked data: flushes them to the disk and marks the backup as no longer
  // needed. The destructor then restores only top-level entries that tar has not replaced, such
  // as the user's own link. Returns the first failure; after a failure the destructor still
  // restores the complete directory.
  std::error_code discard();

  // Restores the directory if a program ended during an install there, unless the newer
  // data are complete. Returns the directory from which to read the local data. This is
  // `directory`/data-files. It is the backup if the backup cannot be restored, and while
  // another program, or a command that an ended program left running, is still unpacking.
  static std::filesystem::path recover(const std::filesystem::path& directory);

private:
  const std::filesystem::path directory;
  const DirectoryLock lock;
  std::error_code failed;
};
