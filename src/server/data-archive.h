#pragma once

#include <string>
#include <system_error>

class DataBackup;

// The part of the install of reference data that changes the directory of local data and
// shows no message.

// The result of unpacking an archive. It succeeded only if `status` is 0 and there is no
// `failure`.
struct Unpacked {
  std::string command;
  int status = 0;          // of the command, encoded as in wait(2); -77: it could not be started
  std::string output;      // of the command
  std::error_code failure; // the reason why the backup could not be discarded
};

// Unpacks an archive into a directory with the system's tar and bzip2, and discards the
// directory's backup if that succeeds. No file becomes larger than a data file may be.
Unpacked unpack_archive(const std::string& archive, const std::string& directory,
                        DataBackup& backup);
