// Target: the check of a backup before it is restored. A refusal has a reason.
#include <cstring>

#include "cli/could-not-run.h"
#include "cli/store-restore.h"
#include "target.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
  static const Scratch scratch;
  scratch.write("backup.zip", bytes_of(data, size));
  try {
    check_backup(scratch.dir + "backup.zip");
  } catch (const CouldNotRun& failure) {
    require(std::strlen(failure.what()) > 0, "a refusal has a reason");
  }
  return 0;
}
