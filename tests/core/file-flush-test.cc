#include "core/file-flush.h"
#include "support/data-set.h"

#include <fcntl.h>
#include <gtest/gtest.h>

// The tests in tests/faults simulate failures of the disk: they let system calls fail.

TEST(FlushToDisk, FlushesFilesAndDirectories)
{
  const DataSet scratch;
  scratch.file("a", "text");
  for (const std::string& path : {scratch.dir, scratch.dir + "a"})
    EXPECT_FALSE(flush_to_disk(Descriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC)))) << path;
}

TEST(FlushToDisk, ReportsNoErrorForAFileThatCannotBeFlushed)
{
  int ends[2];
  ASSERT_EQ(0, pipe2(ends, O_CLOEXEC));
  const Descriptor read_end(ends[0]);
  const Descriptor write_end(ends[1]);
  EXPECT_FALSE(flush_to_disk(write_end)); // EINVAL
}
