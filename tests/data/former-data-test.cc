#include "data/former-data.h"
#include "support/data-set.h"

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
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
    const pid_t process = fork();
    if (process == 0) {
      const FormerData former(directory.dir);
      unpack_over();
      _exit(0);
    }
    EXPECT_EQ(process, waitpid(process, nullptr, 0));
    EXPECT_TRUE(file_exists(kept));
  }

  const DataSet directory;
  const std::string a_csv = directory.dir + "data-files/a.csv";
  const std::string b_csv = directory.dir + "data-files/b.csv";
  const std::string kept = directory.dir + "former-data-files";
};

std::ptrdiff_t entries_in(const std::string& directory)
{
  return std::distance(fs::directory_iterator(directory), fs::directory_iterator());
}

// As /proc/locks tells it.
bool waits_for_lock(pid_t process)
{
  std::ifstream locks("/proc/locks");
  const std::string number = " " + std::to_string(process) + " ";
  for (std::string line; std::getline(locks, line);) {
    if (line.find("-> FLOCK") != std::string::npos && line.find(number) != std::string::npos)
      return true;
  }
  return false;
}

} // namespace

TEST_F(FormerDataTest, LeavesNothingBesideNewDataThatAreWhole)
{
  {
    FormerData former(directory.dir);
    unpack_over();
    EXPECT_FALSE(former.failure());
    EXPECT_FALSE(former.let_go());
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

// tar goes on for a while when the program has ended.
TEST_F(FormerDataTest, ComesBackOnlyOnceTheCommandsOfAKilledProgramHaveEnded)
{
  const std::string go_on = directory.dir + "go-on";
  ASSERT_EQ(0, mkfifo(go_on.c_str(), 0600));
  const std::string unpacking = "read line <'" + go_on + "'; echo new >'" + b_csv + "'";
  const pid_t killed = fork();
  if (killed == 0) {
    const FormerData former(directory.dir);
    unpack_over();
    const FILE* const command = popen(unpacking.c_str(), "r");
    _exit(command ? 0 : 1);
  }
  EXPECT_EQ(killed, waitpid(killed, nullptr, 0));
  const pid_t start = fork();
  if (start == 0) {
    FormerData::put_back(directory.dir);
    _exit(0);
  }
  while (!waits_for_lock(start) && waitpid(start, nullptr, WNOHANG) == 0)
    sched_yield();
  write_file(go_on, "\n");
  EXPECT_EQ(start, waitpid(start, nullptr, 0)) << "it has not waited";
  fs::remove(go_on);
  EXPECT_EQ("old", read_file(a_csv));
  EXPECT_FALSE(file_exists(b_csv));
  EXPECT_EQ(1, entries_in(directory.dir));
}

TEST_F(FormerDataTest, ComesBackBeforeOtherDataAreKept)
{
  be_killed_while_unpacking();
  {
    const FormerData former(directory.dir);
    EXPECT_EQ("old", read_file(a_csv));
    unpack_over();
  }
  EXPECT_EQ("old", read_file(a_csv));
  EXPECT_EQ(1, entries_in(directory.dir));
}

TEST_F(FormerDataTest, ThatWasNotKeptWholeDoesNotComeBack)
{
  directory.file("former-data-files.part/a.csv", "half");
  FormerData::put_back(directory.dir);
  EXPECT_EQ("old", read_file(a_csv));
  EXPECT_EQ(1, entries_in(directory.dir));
}

// An archive can have left one.
TEST_F(FormerDataTest, IsNotWhereALinkLeads)
{
  const DataSet outside;
  outside.file("a.csv", "not mine");
  fs::create_directory_symlink(outside.dir, kept);
  FormerData::put_back(directory.dir);
  EXPECT_EQ("old", read_file(a_csv));
}

TEST_F(FormerDataTest, CanBeAFileThatSomebodyPutThere)
{
  fs::remove_all(directory.dir + "data-files");
  directory.file("data-files", "mine");
  {
    const FormerData former(directory.dir);
    EXPECT_FALSE(former.failure());
    fs::remove(directory.dir + "data-files");
    directory.file("data-files/a.csv", "new");
  }
  EXPECT_EQ("mine", read_file(directory.dir + "data-files"));
  EXPECT_EQ(1, entries_in(directory.dir));
}

TEST_F(FormerDataTest, SaysThatItCannotBeKept)
{
  const FormerData former(directory.dir + "nowhere");
  EXPECT_EQ(std::errc::no_such_file_or_directory, former.failure());
}

TEST_F(FormerDataTest, LetsHalfOfAFirstCopyGo)
{
  fs::remove_all(directory.dir + "data-files");
  be_killed_while_unpacking();
  FormerData::put_back(directory.dir);
  EXPECT_EQ(0, entries_in(directory.dir));
}
