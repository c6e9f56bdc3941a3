#include "support/data-set.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>

#include "cli/scratch-directory.h"

namespace fs = std::filesystem;

namespace {

// Provides a separate directory for temporary files.
class ScratchDirectoryTest : public testing::Test
{
public:
  ScratchDirectoryTest() : before(fs::temp_directory_path())
  {
    setenv("TMPDIR", place.dir.c_str(), 1);
  }
  ~ScratchDirectoryTest() override { setenv("TMPDIR", before.c_str(), 1); }

  const fs::path before;
  const DataSet other; // outside of that directory
  const DataSet place;
};

using ScratchDirectoryDeathTest = ScratchDirectoryTest;

void fill(const ScratchDirectory& scratch)
{
  write_file((scratch.path / "data-files/habitat.csv").string(), "text");
}

} // namespace

TEST_F(ScratchDirectoryTest, IsForThisUserOnly)
{
  const ScratchDirectory scratch;
  EXPECT_EQ(fs::perms::owner_all, fs::status(scratch.path).permissions());
  EXPECT_TRUE(fs::is_empty(scratch.path));
}

TEST_F(ScratchDirectoryTest, IsRemovedWithItsContents)
{
  {
    const ScratchDirectory scratch;
    fill(scratch);
    EXPECT_FALSE(fs::is_empty(place.dir));
  }
  EXPECT_TRUE(fs::is_empty(place.dir));
}

TEST_F(ScratchDirectoryTest, DoesNotRemoveTheTargetOfALink)
{
  other.file("mine", "text");
  {
    const ScratchDirectory scratch;
    fs::create_directory_symlink(other.dir, scratch.path / "link");
  }
  EXPECT_TRUE(fs::is_empty(place.dir));
  EXPECT_TRUE(file_exists(other.dir + "mine"));
}

TEST_F(ScratchDirectoryDeathTest, IsRemovedWhenTheProcessExits)
{
  const auto exit_early = [] {
    const ScratchDirectory scratch;
    fill(scratch);
    std::exit(7);
  };
  EXPECT_EXIT(exit_early(), testing::ExitedWithCode(7), "");
  EXPECT_TRUE(fs::is_empty(place.dir));
}

TEST_F(ScratchDirectoryDeathTest, IsRemovedBeforeASignalEndsTheProcess)
{
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    const auto interrupt = [signal] {
      const ScratchDirectory scratch;
      fill(scratch);
      raise(signal);
      if (!scratch.signals.is_pending())
        std::exit(1);
    };
    EXPECT_EXIT(interrupt(), testing::KilledBySignal(signal), "");
    EXPECT_TRUE(fs::is_empty(place.dir));
  }
}
