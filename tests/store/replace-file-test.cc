#include "store/full-disk.h"
#include "store/replace-file.h"
#include "store/unprivileged.h"
#include "support/data-set.h"

#include <giomm/error.h>
#include <giomm/file.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/stat.h>

#include <chrono>
#include <filesystem>
#include <string>

namespace fs = std::filesystem;

namespace {

std::string replace(const std::string& path, const std::string& text, const std::string& etag = "")
{
  return replace_file(path, text.data(), text.size(), etag);
}

std::ptrdiff_t files_in(const std::string& directory)
{
  return std::distance(fs::directory_iterator(directory), fs::directory_iterator());
}

} // namespace

TEST(ReplaceFile, WritesNewAndExistingFilesCompletely)
{
  const DataSet directory;
  const std::string path = directory.dir + "a b";
  for (const std::string& text :
       {std::string("first"), std::string("a longer second"), std::string("\0\xff\n", 3),
        std::string(1000000, 'x'), std::string()}) {
    replace(path, text);
    EXPECT_EQ(text, read_file(path));
  }
  EXPECT_EQ(1, files_in(directory.dir));
}

TEST(ReplaceFile, ReturnsATagThatAllowsTheNextWrite)
{
  const DataSet directory;
  const std::string path = directory.dir + "a";
  std::string etag = replace(path, "one");
  EXPECT_NE("", etag);
  etag = replace(path, "two", etag);
  etag = replace(path, "three", etag);
  EXPECT_EQ("three", read_file(path));
}

TEST(ReplaceFile, RefusesAFileThatHasChangedSinceItsTag)
{
  const DataSet directory;
  const std::string path = directory.dir + "a";
  const std::string etag = replace(path, "one");
  write_file(path, "theirs");
  fs::last_write_time(path, fs::last_write_time(path) + std::chrono::seconds(10));
  EXPECT_THROW(replace(path, "two", etag), Gio::Error);
  EXPECT_EQ("theirs", read_file(path));
  replace(path, "two");
  EXPECT_EQ("two", read_file(path)) << "without a tag, the function compares nothing";
}

TEST(ReplaceFile, WritesAMissingFileWithAnyTag)
{
  const DataSet directory;
  const std::string path = directory.dir + "a";
  const std::string etag = replace(path, "one");
  fs::remove(path);
  replace(path, "two", etag);
  EXPECT_EQ("two", read_file(path));
}

TEST(ReplaceFile, LeavesTheOldFileWhenTheDiskIsFull)
{
  const DataSet directory;
  const std::string path = directory.dir + "a";
  const std::string etag = replace(path, "one");
  {
    const FullDisk full(100);
    EXPECT_THROW(replace(path, std::string(1000, 'x'), etag), Gio::Error);
  }
  EXPECT_EQ("one", read_file(path));
  EXPECT_EQ(1, files_in(directory.dir)) << "no part of the new file remains";
  replace(path, "two", etag);
  EXPECT_EQ("two", read_file(path));
}

TEST(ReplaceFile, LeavesNoPartOfANewFileWhenTheDiskIsFull)
{
  const DataSet directory;
  {
    const FullDisk full(100);
    EXPECT_THROW(replace(directory.dir + "a", std::string(1000, 'x')), Gio::Error);
  }
  EXPECT_EQ(0, files_in(directory.dir));
}

TEST(ReplaceFile, RefusesWhatIsNotAFile)
{
  const DataSet directory;
  fs::create_directory(directory.dir + "d");
  EXPECT_THROW(replace(directory.dir + "d", "x"), Gio::Error);
  EXPECT_THROW(replace(directory.dir + "missing/a", "x"), Gio::Error);
  EXPECT_THROW(replace("/dev/full", "x"), Gio::Error);
  EXPECT_TRUE(fs::is_directory(directory.dir + "d"));
}

TEST(ReplaceFile, CreatesAFileWithTheLibrarysTagAndTheUsersMode)
{
  const DataSet directory;
  const std::string path = directory.dir + "a";
  const mode_t before = umask(027);
  const std::string etag = replace(path, "one");
  umask(before);
  const auto info = Gio::File::create_for_path(path)->query_info("etag::value");
  EXPECT_EQ(info->get_etag(), etag);
  EXPECT_EQ(fs::perms(0640), fs::status(path).permissions());
}

TEST(ReplaceFile, WritesThroughADanglingLink)
{
  const DataSet directory;
  const std::string path = directory.dir + "a";
  fs::create_symlink(directory.dir + "nowhere", path);
  replace(path, "one");
  EXPECT_EQ("one", read_file(path));
}

// If the library cannot replace the old file, it overwrites the content of that file.
TEST(ReplaceFile, RestoresTheOldFileIfTheDiskIsFullDuringAnOverwrite)
{
  const struct {
    const char* why;
    void (*prepare)(const std::string& path);
    fs::perms directory_rights;
  } cases[] = {
      {"read-only directory", [](const std::string&) {}, fs::perms(0555)},
      {"two names", [](const std::string& path) { fs::create_hard_link(path, path + " too"); },
       fs::perms(0755)},
      {"symbolic link",
       [](const std::string& path) {
         fs::rename(path, path + " too");
         fs::create_symlink(path + " too", path);
       },
       fs::perms(0755)},
  };
  for (const auto& c : cases) {
    const DataSet directory;
    hand_over(directory.dir, directory.dir);
    const std::string path = directory.dir + "a";
    const OnlyRights rights(directory.dir, fs::perms(0755));
    std::string etag;
    {
      const Unprivileged bound;
      etag = replace(path, "the old one");
      c.prepare(path);
    }
    const OnlyRights then(directory.dir, c.directory_rights);
    const Unprivileged bound;
    {
      const FullDisk full(100);
      EXPECT_THROW(replace(path, std::string(1000, 'x'), etag), Gio::Error) << c.why;
    }
    EXPECT_EQ("the old one", read_file(path)) << c.why;
    replace(path, "the new one", etag); // the tag is still valid
    EXPECT_EQ("the new one", read_file(path)) << c.why;
  }
}

namespace {

// Mounts a small file system on a directory during its lifetime. It has space for two files and
// 16 KiB.
class SmallFileSystem
{
public:
  explicit SmallFileSystem(const std::string& at)
      : directory(at),
        is_mounted(mount("tmpfs", at.c_str(), "tmpfs", 0, "nr_inodes=3,size=16k") == 0)
  {
  }
  ~SmallFileSystem()
  {
    if (is_mounted)
      umount(directory.c_str());
  }
  SmallFileSystem(const SmallFileSystem&) = delete;
  SmallFileSystem& operator=(const SmallFileSystem&) = delete;

  const std::string directory;
  const bool is_mounted; // false if the test has no permission to mount it
};

ino_t inode_of(const std::string& path)
{
  struct stat info = {};
  EXPECT_EQ(0, stat(path.c_str(), &info));
  return info.st_ino;
}

} // namespace

// If the library cannot create its temporary file, it overwrites the content of the old file.
TEST(ReplaceFile, RestoresTheOldFileIfNoFileCanBeCreatedAndTheDiskIsFull)
{
  const DataSet directory;
  const SmallFileSystem small(directory.dir);
  if (!small.is_mounted)
    GTEST_SKIP() << "the test has no permission to mount a file system";
  const std::string path = directory.dir + "a";
  const std::string old_text(2000, 'o');
  const std::string etag = replace(path, old_text);
  write_file(directory.dir + "the last inode", std::string(8192, 'x'));
  EXPECT_THROW(replace(path, std::string(40000, 'n'), etag), Gio::Error);
  EXPECT_EQ(old_text, read_file(path));
  EXPECT_EQ(2, files_in(directory.dir));

  const ino_t inode = inode_of(path);
  replace(path, "the new one", etag); // the tag is still valid
  EXPECT_EQ("the new one", read_file(path));
  EXPECT_EQ(inode, inode_of(path)) << "the file itself was overwritten";
}
