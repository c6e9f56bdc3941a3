#pragma once

#include <string>
#include <system_error>

class DataBackup;

// Unpacking of downloaded reference data, without messages to the user.

// The result of unpacking an archive. It succeeded only if `status` is 0 and there is no
// `failure`.
struct Unpacked {
  std::string command;
  int status = 0;          // of the command, encoded as in wait(2); -77: it could not be started
  std::string output;      // of the command
  std::error_code failure; // the reason why the backup could not be discarded
};

// Unpacks an archive into a directory with the system's tar and bzip2, and discards the
// directory's backup if that succeeds. Fails if a file would have more than
// largest_data_file bytes. Prints the command to standard output from trace level 1 on. A path
// with an apostrophe breaks the command, which quotes both paths with apostrophes.
Unpacked unpack_archive(const std::string& archive, const std::string& directory,
                        DataBackup& backup);
