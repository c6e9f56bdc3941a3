#include "data/former-data.h"
#include "support/data-set.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace fs = std::filesystem;

namespace {

class FormerDataTest : public testing::Test
{
public:
  FormerDataTest() { directory.file("data-files/a.csv", "old"); }

  // As tar does it: a new file in the place of the old one.
  void unpack_over() const
  {
    fs::remove(a_csv);
    directory.file("data-files/a.csv", "new");
    directory.file("data-files/b.csv", "new");
  }

  // What a program leaves that is killed while it unpacks.
  void be_killed_while_unpacking() const
  {
    auto* const never_ended = new FormerData(directory.dir); // the test reaches it no more
    unpack_over();
    fs::rename(directory.dir + "former-data-files", directory.dir + "kept");
    delete never_ended;
    fs::rename(directory.dir + "kept", directory.dir + "former-data-files");
  }

  const DataSet directory;
  const std::string a_csv = directory.dir + "data-files/a.csv";
  const std::string b_csv = directory.dir + "data-files/b.csv";
};

std::ptrdiff_t entries_in(const std::string& directory)
{
  return std::distance(fs::directory_iterator(directory), fs::directory_iterator());
}

} // namespace

TEST_F(FormerDataTest, LeavesNothingBesideNewDataThatAreWhole)
{
  {
    const FormerData former(directory.dir);
    unpack_over();
  }
  FormerData::put_back(directory.dir);
  EXPECT_EQ("new", read_file(a_csv));
  EXPECT_EQ(1, entries_in(directory.dir));
}

TEST_F(FormerDataTest, ComesBackIfTheNewDataAreNotWhole)
{
  {
    const FormerData former(directory.dir);
    unpack_over();
    FormerData::put_back(directory.dir);
  }
  EXPECT_EQ("old", read_file(a_csv));
  EXPECT_FALSE(file_exists(b_csv));
  EXPECT_EQ(1, entries_in(directory.dir));
}

TEST_F(FormerDataTest, ComesBackAfterTheProgramWasKilled)
{
  be_killed_while_unpacking();
  FormerData::put_back(directory.dir);
  EXPECT_EQ("old", read_file(a_csv));
  EXPECT_FALSE(file_exists(b_csv));
  EXPECT_EQ(1, entries_in(directory.dir));
}

TEST_F(FormerDataTest, ThatWasNotKeptWholeDoesNotComeBack)
{
  directory.file("former-data-files.part/a.csv", "half");
  FormerData::put_back(directory.dir);
  EXPECT_EQ("old", read_file(a_csv));
  {
    const FormerData former(directory.dir);
  }
  EXPECT_EQ(1, entries_in(directory.dir)) << "and goes with the next one";
}

TEST_F(FormerDataTest, LetsHalfOfAFirstCopyGo)
{
  fs::remove_all(directory.dir + "data-files");
  be_killed_while_unpacking();
  FormerData::put_back(directory.dir);
  EXPECT_EQ(0, entries_in(directory.dir));
}
