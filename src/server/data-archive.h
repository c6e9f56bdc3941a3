#pragma once

#include <string>
#include <system_error>

class DataBackup;

// What the installing of an archive of reference data does to the directory of
// local data, without a message to the user.

// How the unpacking of an archive ended: as it should only if there is neither a
// status nor a failure.
struct Unpacked {
  std::string command;
  int status = 0;          // of the command, as the system encodes it (wait(2)); -77: not started
  std::string output;      // of the command
  std::error_code failure; // why the backup could not be discarded
};

// Unpacks an archive into a directory with the system's commands, and discards the
// backup of it if that ends as it should. No file becomes larger than a data file may be.
Unpacked unpack_archive(const std::string& archive, const std::string& directory,
                        DataBackup& backup);
