#pragma once

#include <string>
#include <vector>

#include "cli/finding.h"
#include "cli/scratch-directory.h"

// The most bytes that the entries of an archive of reference data may have together. A real
// set has less than 1 MB.
constexpr long long most_unpacked = 512LL << 20;

struct UnpackedSet {
  std::vector<Finding> findings;
  // Whether the archive was read to its end. The set in the scratch directory can have
  // faults of its own then.
  bool is_whole = false;
};

// Unpacks an archive of reference data, a tar file compressed by bzip2, as the program
// would: regular files of the directory data-files come to stand in a directory of that name
// in `scratch`. Writes nothing elsewhere: every other entry gives an error and is not
// unpacked. Stops at the first entry that exceeds a limit of data/data-file.h, and where the
// archive is damaged. The files of the findings are the archive's path, or entries below it. Throws
// a text if a file cannot be written and when a signal asks the process to end.
UnpackedSet unpack_data_archive(const std::string& archive, const ScratchDirectory& scratch);
