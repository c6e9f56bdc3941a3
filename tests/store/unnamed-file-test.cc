// Tests the temporary file that the plain POSIX source leaves if the program is killed.
#include "store/system-file.h"
#include "support/data-set.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>

namespace fs = std::filesystem;

namespace {

// The name of the temporary file, which is in the parent of the directory of the new file.
const char* const leftover = ".mavo-survey-unnamed-1-2";

void make_file_beside_leftover(const DataSet& store, std::chrono::minutes age)
{
  store.file(leftover, "half");
  fs::last_write_time(store.dir + leftover, fs::file_time_type::clock::now() - age);
  fs::create_directory(store.dir + "state");
  EXPECT_TRUE(make_whole_file(store.dir + "state/file", "text", 4));
}

} // namespace

TEST(UnnamedFile, IsRemovedAnHourAfterItsProgramWasKilled)
{
  const DataSet store;
  make_file_beside_leftover(store, std::chrono::minutes(61));
  EXPECT_FALSE(file_exists(store.dir + leftover));
}

TEST(UnnamedFile, StaysWhileAnotherProgramMayBeWritingIt)
{
  const DataSet store;
  make_file_beside_leftover(store, std::chrono::minutes(59));
  EXPECT_TRUE(file_exists(store.dir + leftover));
}

TEST(UnnamedFile, IsTheOnlyKindOfFileThatIsRemoved)
{
  const DataSet store;
  const std::string other = store.dir + "letter.mavo-survey-unnamed-";
  write_file(other, "Dear diary");
  fs::last_write_time(other, fs::file_time_type::clock::now() - std::chrono::hours(48));
  make_file_beside_leftover(store, std::chrono::minutes(61));
  EXPECT_TRUE(file_exists(other));
}
