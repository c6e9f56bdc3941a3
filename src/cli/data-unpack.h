#pragma once

#include <string>
#include <vector>

#include "cli/finding.h"
#include "cli/scratch-directory.h"

// The largest accepted total size of the entries of an archive of reference data, in bytes. A
// real set has less than 1 MB.
constexpr long long most_unpacked = 512LL << 20;

// The result of unpack_data_archive().
struct UnpackedSet {
  std::vector<Finding> findings;
  // Whether the archive was read to its end. Only then does a check of the unpacked set make
  // sense.
  bool is_complete = false;
};

// Unpacks an archive of reference data, which is a tar file compressed by bzip2. Like the
// program, it unpacks the regular files of the directory data-files, into a directory of that
// name in `scratch`. It writes nothing elsewhere: it reports each other entry as an error and
// does not unpack it. It stops at the first entry that exceeds a limit of data/data-file.h and
// at the first damaged place. Findings refer to the path of the archive, or to that path with
// the name of an entry. Throws a Glib::ustring with the reason if a file cannot be
// written or a signal asks the process to end.
UnpackedSet unpack_data_archive(const std::string& archive, const ScratchDirectory& scratch);
