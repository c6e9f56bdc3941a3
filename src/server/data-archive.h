#pragma once

#include <filesystem>
#include <string>
#include <system_error>

// What the installing of an archive of reference data does to the directory of
// local data, without a word to the user.

// Removes all below a directory that is neither file nor directory. tar lets no
// archive lead its own entries out of there, since it makes links last; but a
// link that one archive has left would lead the entries of the next one out, and
// a pipe would be waited for. The result is empty if none of them is left.
std::error_code remove_links_and_pipes(const std::filesystem::path& directory);

// How the unpacking of an archive ended: as it should only if there is neither a
// status nor a failure.
struct Unpacked {
  std::string command;
  int status = 0;          // of the command, as the system encodes it (wait(2)); -77: not started
  std::string output;      // of the command
  std::error_code failure; // why the former data could not be kept or let go
};

// Unpacks an archive into a directory with the system's commands. Unless that
// ends as it should, the directory's data-files is what it was before.
Unpacked unpack_archive(const std::string& archive, const std::string& directory);
