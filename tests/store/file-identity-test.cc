#include "store/file-identity.h"
#include "support/data-set.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

namespace fs = std::filesystem;

namespace {

// A directory with a file, a link to that directory, and a directory with a similar name.
class FileIdentity : public testing::Test
{
public:
  FileIdentity()
  {
    fs::create_directories(base + "store/sub");
    fs::create_directory_symlink(base + "store", base + "link");
    fs::create_directory(base + "store2");
    write_file(base + "store/file", "words");
  }

  const DataSet directory;
  const std::string base = directory.dir; // ends in "/"
};

} // namespace

TEST_F(FileIdentity, IsTheSameForAllSpellingsOfAPath)
{
  const std::string file = base + "store/file";
  for (const char* const spelling : {"store/file", "link/file", "store/./file", "store//file",
                                     "store/sub/../file", "link/sub/../file"}) {
    EXPECT_EQ(resolved_path(file), resolved_path(base + spelling)) << spelling;
    EXPECT_TRUE(same_place(file, base + spelling)) << spelling;
    EXPECT_TRUE(same_file(file, base + spelling)) << spelling;
    EXPECT_TRUE(leads_into(base + spelling, base + "link")) << spelling;
  }
}

TEST_F(FileIdentity, IsDefinedForAPathWithoutAFile)
{
  EXPECT_TRUE(same_place(base + "store/new", base + "link/new"));
  EXPECT_TRUE(same_place(base + "store/none/new", base + "link/none/./new"));
  EXPECT_TRUE(leads_into(base + "link/new", base + "store"));
  EXPECT_FALSE(same_file(base + "store/new", base + "link/new"));
  EXPECT_FALSE(same_place("", ""));
  EXPECT_FALSE(same_place("", base + "store"));
}

TEST_F(FileIdentity, DistinguishesNeighbours)
{
  write_file(base + "store2/file", "words");
  EXPECT_FALSE(same_place(base + "store/file", base + "store2/file"));
  EXPECT_FALSE(same_file(base + "store/file", base + "store2/file"));
  EXPECT_FALSE(leads_into(base + "store2/file", base + "store"));
  EXPECT_FALSE(leads_into(base + "store/../store2/file", base + "store"));
  EXPECT_FALSE(leads_into(base + "store", base + "store"));
}

TEST_F(FileIdentity, BelongsToADirectoryByItsSpellingOrByItsTarget)
{
  write_file(base + "elsewhere", "words");
  fs::create_symlink(base + "elsewhere", base + "store/link");
  fs::create_symlink(base + "store/file", base + "store2/link");
  for (const char* const path :
       {"store/file", "store/link", "link/file", "store2/link", "store2/../link/file", "store2/x"})
    EXPECT_TRUE(belongs_to(base + path, base + "store")) << path;
  for (const char* const path : {"link/link", "elsewhere", "link/../store2/x"})
    EXPECT_FALSE(belongs_to(base + path, base + "store")) << path;
  EXPECT_FALSE(belongs_to("", base + "store"));
}

TEST_F(FileIdentity, OfAFileWithTwoNamesIsThatOfTheFile)
{
  fs::create_hard_link(base + "store/file", base + "store/second");
  EXPECT_TRUE(same_file(base + "store/file", base + "store/second"));
  EXPECT_FALSE(same_place(base + "store/file", base + "store/second"));
}

TEST_F(FileIdentity, ReturnsAPathThatCannotBeResolved)
{
  fs::create_symlink(base + "loop", base + "loop");
  EXPECT_EQ(base + "loop/file", resolved_path(base + "loop/file"));
}

TEST_F(FileIdentity, ReadsOnlyRegularFilesUpToALimit)
{
  const std::string file = base + "store/file";
  fs::create_symlink(file, base + "to-file");
  fs::create_symlink("/dev/zero", base + "zeros");
  ASSERT_EQ(0, mkfifo((base + "pipe").c_str(), 0600));
  write_file(base + "empty", "");
  EXPECT_EQ("words", file_bytes(file));
  EXPECT_EQ("words", file_bytes(base + "to-file"));
  EXPECT_EQ("words", file_bytes(file, 5));
  EXPECT_EQ("", file_bytes(base + "empty"));
  EXPECT_EQ(std::nullopt, file_bytes(file, 4));
  for (const char* const name : {"zeros", "pipe", "store", "none"})
    EXPECT_EQ(std::nullopt, file_bytes(base + name)) << name;
}

TEST_F(FileIdentity, ComparesTheCompleteContent)
{
  const std::string file = base + "store/file";
  EXPECT_TRUE(file_holds(file, "words"));
  EXPECT_FALSE(file_holds(file, "word"));
  EXPECT_FALSE(file_holds(file, "words "));
  EXPECT_FALSE(file_holds(file, "wordy"));
  EXPECT_FALSE(file_holds(base + "none", ""));
}
