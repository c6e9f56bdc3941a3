// The sources for Linux and for plain POSIX must pass the same tests. CMake builds this file with
// each of them.
#include "store/replace-file.h"
#include "store/system-file.h"
#include "support/data-set.h"

#include <fcntl.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <set>
#include <string>

namespace fs = std::filesystem;

namespace {

class SystemFile : public testing::Test
{
public:
  SystemFile() { fs::create_directory(store.dir + "state"); }

  bool make(const std::string& text) const
  {
    return make_whole_file(path, text.data(), text.size());
  }
  // Returns all files of the store by their paths in it.
  std::set<std::string> files() const
  {
    std::set<std::string> found;
    for (const auto& entry : fs::recursive_directory_iterator(store.dir)) {
      if (!entry.is_directory())
        found.insert(fs::relative(entry.path(), store.dir).string());
    }
    return found;
  }

  const DataSet store;
  const std::string path = store.dir + "state/file";
  const std::string target = store.dir + "state/target";
};

using Files = std::set<std::string>;

} // namespace

TEST_F(SystemFile, CreatesAFileAndNothingElse)
{
  EXPECT_TRUE(make("text"));
  EXPECT_EQ("text", read_file(path));
  EXPECT_EQ(Files{"state/file"}, files());
}

TEST_F(SystemFile, CreatesAFileWithTheModeThatTheUmaskAllows)
{
  const mode_t before = umask(022);
  EXPECT_TRUE(make(""));
  umask(before);
  struct stat status = {};
  ASSERT_EQ(0, stat(path.c_str(), &status));
  EXPECT_EQ(0644U, status.st_mode & 0777U);
}

TEST_F(SystemFile, DoesNotReplaceAnExistingFile)
{
  write_file(path, "old");
  EXPECT_FALSE(make("new"));
  EXPECT_EQ("old", read_file(path));
  EXPECT_EQ(Files{"state/file"}, files());
}

TEST_F(SystemFile, CreatesNothingWithoutTheDirectory)
{
  fs::remove(store.dir + "state");
  EXPECT_FALSE(make("text"));
  EXPECT_EQ(Files(), files());
}

TEST_F(SystemFile, RenamesAFileToAFreeName)
{
  write_file(path, "text");
  EXPECT_TRUE(rename_to_free_name(path, target));
  EXPECT_EQ(Files{"state/target"}, files());
  EXPECT_EQ("text", read_file(target));
}

TEST_F(SystemFile, DoesNotRenameAFileToATakenName)
{
  write_file(path, "text");
  write_file(target, "other");
  EXPECT_FALSE(rename_to_free_name(path, target));
  EXPECT_EQ(EEXIST, errno);
  EXPECT_EQ("text", read_file(path));
  EXPECT_EQ("other", read_file(target));
}

TEST_F(SystemFile, CannotRenameAMissingFile)
{
  EXPECT_FALSE(rename_to_free_name(path, target));
  EXPECT_EQ(ENOENT, errno);
  EXPECT_EQ(Files(), files());
}

TEST_F(SystemFile, ReturnsTheTimesThatTheEntityTagContains)
{
  write_file(path, "text");
  const std::string tag = entity_tag(path);
  struct stat status = {};
  ASSERT_EQ(0, stat(path.c_str(), &status));
  const timespec later[] = {{2'000'000'000, 123'456'789}, {2'000'000'001, 987'654'321}};
  ASSERT_EQ(0, utimensat(AT_FDCWD, path.c_str(), later, 0));
  ASSERT_NE(tag, entity_tag(path));
  ASSERT_EQ(0, utimensat(AT_FDCWD, path.c_str(), times_of(status).data(), 0));
  EXPECT_EQ(tag, entity_tag(path));
}
