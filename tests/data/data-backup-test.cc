#include "data/data-backup.h"
#include "support/data-set.h"
#include "support/output.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>

namespace fs = std::filesystem;

namespace {

class DataBackupTest : public testing::Test
{
public:
  DataBackupTest() { write_file(a_csv, "old"); }

  // Replaces a file with a new one, as tar does.
  void unpack_over() const
  {
    fs::remove(a_csv);
    write_file(a_csv, "new");
    write_file(b_csv, "new");
  }

  // Calls `action` in a process that then ends immediately.
  static void be_killed_after(const std::function<void()>& action)
  {
    const pid_t process = fork();
    if (process == 0) {
      action();
      _exit(0);
    }
    EXPECT_EQ(process, waitpid(process, nullptr, 0));
  }

  // Calls `action` in a process of a user without root's permissions.
  void do_as_user(const std::function<void()>& action) const
  {
    const uid_t user = geteuid() == 0 ? 65'534 : geteuid();
    fs::permissions(scratch.dir, fs::perms::all);
    EXPECT_EQ(0, chown(local.c_str(), user, getegid()));
    for (const auto& entry : fs::recursive_directory_iterator(local))
      EXPECT_EQ(0, lchown(entry.path().c_str(), user, getegid()));
    const pid_t process = fork();
    if (process == 0) {
      EXPECT_EQ(0, setuid(user));
      action();
      _exit(HasFailure() ? 1 : 0);
    }
    int status = 0;
    EXPECT_EQ(process, waitpid(process, &status, 0));
    EXPECT_EQ(0, status);
  }

  // Leaves the files of a program that was killed while it was unpacking.
  void be_killed_while_unpacking() const
  {
    be_killed_after([this] {
      const DataBackup backup(local);
      unpack_over();
      _exit(0);
    });
    EXPECT_TRUE(file_exists(backup_place + "/kept/data-files"));
  }

  std::string recover() const
  {
    return output_of([this] { EXPECT_EQ(local + "/data-files", DataBackup::recover(local)); });
  }

  void expect_old_data() const
  {
    EXPECT_EQ("old", read_file(a_csv));
    EXPECT_FALSE(file_exists(b_csv));
  }
  // Expects only the data set, without a backup.
  void expect_tidy() const
  {
    EXPECT_EQ(1, std::distance(fs::directory_iterator(local), fs::directory_iterator()));
    EXPECT_FALSE(file_exists(backup_place));
  }

  // Replaces the complete set as tar does, with the times of the server's files.
  void unpack_complete_set(const std::string& timestamp) const
  {
    DataSet set;
    set.minimal();
    set.file("data-file-info.txt", "timestamp=" + timestamp + "\nupdated=x\n");
    for (const auto& file : fs::directory_iterator(set.dir)) {
      const fs::path target = local + "/data-files/" + file.path().filename().string();
      fs::remove(target);
      fs::copy_file(file.path(), target);
      fs::last_write_time(target, fs::file_time_type::clock::now() - std::chrono::hours(1));
    }
  }
  void start_with_complete_set() const
  {
    fs::remove(a_csv);
    unpack_complete_set("2021");
  }
  std::string timestamp_line() const
  {
    const std::string text = read_file(local + "/data-files/data-file-info.txt");
    return text.substr(0, text.find('\n'));
  }

  const DataSet scratch;
  const std::string local = scratch.dir + "local";
  const std::string a_csv = local + "/data-files/a.csv";
  const std::string b_csv = local + "/data-files/b.csv";
  const std::string backup_place = scratch.dir + ".local-before-update";
  const std::string former = local + "/former-data-files"; // of earlier versions
  const std::string restored = "Restored the data in " + local + " from a backup.\n";
};

// During its lifetime, another process has backed up the directory and is unpacking.
class OtherInstall
{
public:
  explicit OtherInstall(const DataBackupTest& test)
  {
    EXPECT_EQ(0, pipe(go_on));
    int ready[2];
    EXPECT_EQ(0, pipe(ready));
    process = fork();
    if (process == 0) {
      const DataBackup backup(test.local);
      test.unpack_over();
      close(go_on[1]);
      char byte = 0;
      if (write(ready[1], &byte, 1) == 1 && read(go_on[0], &byte, 1) >= 0)
        _exit(0);
    }
    char byte = 0;
    EXPECT_EQ(1, read(ready[0], &byte, 1));
    close(ready[0]);
    close(ready[1]);
    close(go_on[0]);
  }
  ~OtherInstall()
  {
    close(go_on[1]);
    EXPECT_EQ(process, waitpid(process, nullptr, 0));
  }
  OtherInstall(const OtherInstall&) = delete;
  OtherInstall& operator=(const OtherInstall&) = delete;

private:
  int go_on[2]{};
  pid_t process = -1;
};

} // namespace

// --- the end of an install ---

TEST_F(DataBackupTest, LeavesNoBackupBesideCompleteNewData)
{
  EXPECT_EQ("", output_of([this] {
              DataBackup backup(local);
              unpack_over();
              EXPECT_FALSE(backup.failure());
              EXPECT_FALSE(backup.discard());
            }));
  EXPECT_EQ("", recover());
  EXPECT_EQ("new", read_file(a_csv));
  expect_tidy();
}

TEST_F(DataBackupTest, IsRestoredIfTheNewDataAreIncomplete)
{
  EXPECT_EQ(restored, output_of([this] {
              const DataBackup backup(local);
              unpack_over();
            }));
  expect_old_data();
  expect_tidy();
}

TEST_F(DataBackupTest, KeepsFilesThatTheNewDataLack)
{
  const std::string notes = local + "/data-files/more/notes.txt";
  write_file(notes, "mine");
  {
    DataBackup backup(local);
    unpack_over();
    EXPECT_FALSE(backup.discard());
  }
  EXPECT_EQ("mine", read_file(notes));
  EXPECT_EQ(1U, fs::hard_link_count(notes));
}

TEST_F(DataBackupTest, IsRestoredAfterTheProgramWasKilled)
{
  be_killed_while_unpacking();
  EXPECT_EQ(restored, recover());
  expect_old_data();
  expect_tidy();
  EXPECT_EQ("", recover());
}

TEST_F(DataBackupTest, IsRestoredBeforeTheNextBackup)
{
  be_killed_while_unpacking();
  output_of([this] {
    const DataBackup backup(local);
    expect_old_data();
    unpack_over();
  });
  expect_old_data();
  expect_tidy();
}

TEST_F(DataBackupTest, IsNotRestoredBeforeItIsComplete)
{
  write_file(backup_place + "/copies/data-files/a.csv", "half");
  EXPECT_EQ("", recover());
  expect_old_data();
  expect_tidy();
}

TEST_F(DataBackupTest, RestoresAFileOfTheUser)
{
  fs::remove_all(local + "/data-files");
  write_file(local + "/data-files", "mine");
  output_of([this] {
    const DataBackup backup(local);
    EXPECT_FALSE(backup.failure());
    fs::remove(local + "/data-files");
    write_file(a_csv, "new");
  });
  EXPECT_EQ("mine", read_file(local + "/data-files"));
  expect_tidy();
}

TEST_F(DataBackupTest, RemovesAnIncompleteFirstCopy)
{
  fs::remove_all(local + "/data-files");
  be_killed_while_unpacking();
  recover();
  EXPECT_TRUE(fs::is_empty(local));
  EXPECT_FALSE(file_exists(backup_place));
}

TEST_F(DataBackupTest, FailsIfSomethingElseHasItsPath)
{
  write_file(backup_place, "mine");
  const DataBackup backup(local);
  EXPECT_EQ(std::errc::file_exists, backup.failure());
  expect_old_data();
  EXPECT_EQ("mine", read_file(backup_place));
}

// --- links, pipes and closed directories ---

TEST_F(DataBackupTest, RestoresAUsersLinkToADirectory)
{
  const DataSet own;
  own.file("a.csv", "mine");
  fs::remove_all(local + "/data-files");
  fs::create_directory_symlink(own.dir, local + "/data-files");
  output_of([this] {
    const DataBackup backup(local);
    EXPECT_FALSE(backup.failure());
    EXPECT_FALSE(file_exists(local + "/data-files")) << "tar would write through the link";
    write_file(b_csv, "new");
  });
  EXPECT_EQ(own.dir, fs::read_symlink(local + "/data-files"));
  EXPECT_EQ("mine", read_file(own.dir + "a.csv"));
  EXPECT_FALSE(file_exists(own.dir + "b.csv"));
  expect_tidy();
}

TEST_F(DataBackupTest, RestoresAUsersLinkToAFile)
{
  const DataSet own;
  own.file("b.csv", "mine");
  fs::create_symlink(own.dir + "b.csv", b_csv);
  output_of([this] {
    const DataBackup backup(local);
    EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(b_csv)));
    EXPECT_EQ("mine", read_file(b_csv)) << "it stays part of the data set";
    write_file(b_csv, "new");
  });
  EXPECT_EQ(own.dir + "b.csv", fs::read_symlink(b_csv));
  EXPECT_EQ("mine", read_file(own.dir + "b.csv"));
}

TEST_F(DataBackupTest, RestoresAUsersLinkBesideNewData)
{
  fs::create_symlink("somewhere", local + "/notes");
  {
    DataBackup backup(local);
    EXPECT_FALSE(fs::is_symlink(local + "/notes"));
    unpack_over();
    EXPECT_FALSE(backup.discard());
  }
  EXPECT_EQ("somewhere", fs::read_symlink(local + "/notes"));
  EXPECT_EQ("new", read_file(a_csv));
  EXPECT_FALSE(file_exists(backup_place));
}

TEST_F(DataBackupTest, LeavesNoLinkOrPipeBelowTheDirectory)
{
  for (const std::string directory : {"", "/data-files", "/other/deep"}) {
    fs::create_directories(local + directory);
    fs::create_symlink("/", local + directory + "/link");
    fs::create_symlink("nowhere", local + directory + "/broken");
    ASSERT_EQ(0, mkfifo((local + directory + "/pipe").c_str(), 0600));
  }
  const std::string archive = local + "/" + DataBackup::archive_name;
  fs::create_symlink("/dev/null", archive);
  output_of([&] {
    const DataBackup backup(local);
    EXPECT_FALSE(backup.failure());
    for (const auto& entry : fs::recursive_directory_iterator(local)) {
      const fs::file_status status = entry.symlink_status();
      EXPECT_TRUE(fs::is_directory(status) || fs::is_regular_file(status)) << entry.path();
    }
    write_file(archive, "new");
  });
  for (const std::string directory : {"", "/data-files", "/other/deep"}) {
    EXPECT_TRUE(fs::is_symlink(local + directory + "/link"));
    EXPECT_TRUE(fs::is_symlink(local + directory + "/broken"));
    EXPECT_TRUE(fs::is_fifo(local + directory + "/pipe"));
  }
  EXPECT_EQ("new", read_file(archive)) << "the downloaded archive stays";
}

TEST_F(DataBackupTest, OpensADirectoryThatCannotBeEntered)
{
  const std::string closed = local + "/data-files/closed";
  write_file(closed + "/c.csv", "old");
  fs::create_symlink("/", closed + "/link");
  fs::permissions(closed, fs::perms::none);
  do_as_user([&] {
    DataBackup backup(local);
    EXPECT_FALSE(backup.failure());
    EXPECT_FALSE(fs::is_symlink(closed + "/link"));
    unpack_over();
    EXPECT_FALSE(backup.discard());
  });
  EXPECT_EQ("old", read_file(closed + "/c.csv"));
  expect_tidy();
}

TEST_F(DataBackupTest, IsMadeInSpiteOfAnotherUsersClosedDirectory)
{
  if (geteuid() != 0)
    GTEST_SKIP() << "only root can create a directory of another user";
  const std::string closed = local + "/data-files/closed";
  do_as_user([&] {
    write_file(closed + "/c.csv", "old");
    fs::permissions(closed, fs::perms::none);
  });
  ASSERT_EQ(0, chown(closed.c_str(), 0, 0));
  const auto install = [&] {
    DataBackup backup(local);
    EXPECT_FALSE(backup.failure()) << backup.failure().message();
    unpack_over();
    EXPECT_FALSE(backup.discard());
  };
  const pid_t process = fork();
  if (process == 0) {
    EXPECT_EQ(0, setuid(65'534));
    install();
    install();
    _exit(HasFailure() ? 1 : 0);
  }
  int status = 0;
  EXPECT_EQ(process, waitpid(process, &status, 0));
  EXPECT_EQ(0, status);
  EXPECT_EQ("new", read_file(a_csv));
  EXPECT_EQ("old", read_file(backup_place + "/old/0/data-files/closed/c.csv")) << "not lost";
}

TEST_F(DataBackupTest, IsRestoredInADirectoryThatAnArchiveHasClosed)
{
  do_as_user([this] {
    const DataBackup backup(local);
    unpack_over();
    fs::permissions(local + "/data-files", fs::perms::none);
    fs::permissions(local, fs::perms::owner_read);
  });
  expect_old_data();
  expect_tidy();
}

// --- forged backups, and those of earlier versions ---

TEST_F(DataBackupTest, IsNeverAnEntryOfAnArchive)
{
  output_of([this] {
    const DataBackup backup(local);
    unpack_over();
    write_file(former + "/a.csv", "forged");
    write_file(former + "/data-file-info.txt", "timestamp=9999\nupdated=x\n");
  });
  EXPECT_EQ("", recover());
  expect_old_data();
  expect_tidy();
}

TEST_F(DataBackupTest, IsNeverAnEntryOfTheArchiveOfAKilledProgram)
{
  be_killed_while_unpacking();
  write_file(former + "/data-file-info.txt", "timestamp=9999\nupdated=x\n");
  EXPECT_EQ(restored, recover());
  expect_old_data();
  expect_tidy();
}

TEST_F(DataBackupTest, IsNeverAnEntryOfAnArchiveWithNewData)
{
  {
    DataBackup backup(local);
    unpack_over();
    write_file(former + "/data-file-info.txt", "timestamp=9999\nupdated=x\n");
    EXPECT_FALSE(backup.discard());
  }
  EXPECT_EQ("", recover());
  EXPECT_EQ("new", read_file(a_csv));
  expect_tidy();
}

TEST_F(DataBackupTest, OfAnEarlierVersionIsRestored)
{
  write_file(former + "/data-file-info.txt", "timestamp=2021\nupdated=x\n");
  write_file(former + "/c.csv", "old");
  EXPECT_EQ(restored, recover());
  EXPECT_EQ("old", read_file(local + "/data-files/c.csv"));
  EXPECT_FALSE(file_exists(a_csv));
  expect_tidy();
}

TEST_F(DataBackupTest, OfAnEarlierVersionIsEmptyIfThereWereNoData)
{
  fs::create_directories(former);
  EXPECT_EQ(restored, recover());
  EXPECT_TRUE(fs::is_empty(local));
}

TEST_F(DataBackupTest, OfAnEarlierVersionIsNeitherALinkNorAFileNorOtherData)
{
  const DataSet outside;
  outside.file("data-file-info.txt", "timestamp=2021\nupdated=x\n");
  const std::function<void()> stand_ins[] = {
      [&] { fs::create_directory_symlink(outside.dir, former); },
      [&] { write_file(former, "not mine"); },
      [&] { write_file(former + "/photo.jpg", "not mine"); },
  };
  for (const auto& put_there : stand_ins) {
    put_there();
    EXPECT_EQ("", recover());
    expect_old_data();
    EXPECT_TRUE(file_exists(former));
    fs::remove_all(former);
  }
}

TEST_F(DataBackupTest, OfAnEarlierVersionIsNotRestoredOverACompleteNewerSet)
{
  start_with_complete_set();
  fs::create_directories(former);
  for (const auto& file : fs::directory_iterator(local + "/data-files"))
    fs::create_hard_link(file, former / file.path().filename());
  unpack_complete_set("2022");
  EXPECT_EQ("", recover());
  EXPECT_EQ("timestamp=2022", timestamp_line());
  expect_tidy();
}

TEST_F(DataBackupTest, IsMadeInSpiteOfNamesThatAreTooLong)
{
  int directory = open((local + "/data-files").c_str(), O_RDONLY | O_DIRECTORY);
  const std::string name(200, 'x');
  for (int depth = 0; depth < 25; ++depth) {
    EXPECT_EQ(0, mkdirat(directory, name.c_str(), 0700));
    const int below = openat(directory, name.c_str(), O_RDONLY | O_DIRECTORY);
    close(directory);
    directory = below;
  }
  close(directory);
  {
    DataBackup backup(local);
    EXPECT_FALSE(backup.failure()) << backup.failure().message();
    unpack_over();
    EXPECT_FALSE(backup.discard());
  }
  EXPECT_EQ("new", read_file(a_csv));
  expect_tidy();
}

// --- complete newer data ---

TEST_F(DataBackupTest, IsNotRestoredOverACompleteNewerSet)
{
  start_with_complete_set();
  be_killed_after([this] {
    const DataBackup backup(local);
    unpack_complete_set("2022");
    _exit(0);
  });
  EXPECT_EQ("", recover());
  EXPECT_EQ("timestamp=2022", timestamp_line());
  expect_tidy();
}

TEST_F(DataBackupTest, IsRestoredIfItsCopyingWasInterrupted)
{
  start_with_complete_set();
  write_file(local + "/other/notes.txt", "mine");
  write_file(backup_place + "/kept/other/notes.txt", "the same before it was copied");
  EXPECT_EQ(restored, recover());
  EXPECT_EQ("the same before it was copied", read_file(local + "/other/notes.txt"));
  EXPECT_EQ("timestamp=2021", timestamp_line());
}

TEST_F(DataBackupTest, IsRestoredOverANewerSetThatIsNotComplete)
{
  const std::string set = local + "/data-files/";
  const struct {
    const char* why;
    std::function<void()> damage;
  } cases[] = {
      {"older", [&] { unpack_complete_set("2020"); }},
      {"a file is missing", [&] { fs::remove(set + "habitat.csv"); }},
      {"a file was not replaced",
       [&] {
         fs::remove(set + "habitat.csv");
         fs::create_hard_link(backup_place + "/kept/data-files/habitat.csv", set + "habitat.csv");
       }},
      {"a file is still being written",
       [&] { fs::last_write_time(set + "habitat.csv", fs::file_time_type::clock::now()); }},
      {"a row is cut off",
       [&] {
         write_file(set + "habitat.csv", read_file(set + "habitat.csv") + "1");
         fs::last_write_time(set + "habitat.csv",
                             fs::file_time_type::clock::now() - std::chrono::hours(1));
       }},
  };
  start_with_complete_set();
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    be_killed_after([&] {
      const DataBackup backup(local);
      unpack_complete_set("2022");
      c.damage();
      _exit(0);
    });
    EXPECT_NE(std::string::npos, recover().find(restored));
    EXPECT_EQ("timestamp=2021", timestamp_line());
    expect_tidy();
  }
}

TEST_F(DataBackupTest, IsReadIfItCannotBeRestored)
{
  do_as_user([this] {
    unpack_over();
    write_file(backup_place + "/kept/data-files/a.csv", "old");
    fs::permissions(backup_place, fs::perms::owner_read | fs::perms::owner_exec);
    const fs::path data = DataBackup::recover(local);
    EXPECT_EQ(backup_place + "/kept/data-files", data.string());
    EXPECT_EQ("old", read_file(data / "a.csv"));
  });
}

// --- other programs ---

// tar continues for a while after the end of the program.
TEST_F(DataBackupTest, IsRestoredOnlyOnceTheCommandsOfAKilledProgramHaveEnded)
{
  const std::string go_on = scratch.dir + "go-on";
  ASSERT_EQ(0, mkfifo(go_on.c_str(), 0600));
  const std::string unpacking = "read line <'" + go_on + "'; echo new >'" + b_csv + "'";
  be_killed_after([&] {
    const DataBackup backup(local);
    unpack_over();
    const FILE* const command = popen(unpacking.c_str(), "r");
    _exit(command ? 0 : 1);
  });
  int said[2];
  ASSERT_EQ(0, pipe(said));
  const pid_t start = fork();
  if (start == 0) {
    // A new C library ignores setvbuf() unless the stream has just been opened.
    if (!freopen(("/dev/fd/" + std::to_string(said[1])).c_str(), "w", stdout))
      _exit(1);
    setvbuf(stdout, nullptr, _IOLBF, 0);
    DataBackup::recover(local);
    _exit(0);
  }
  close(said[1]);
  char text[1000] = {};
  EXPECT_LT(0, read(said[0], text, sizeof text - 1));
  EXPECT_EQ("Another program is installing data in " + local + "; waiting for up to 5 seconds.\n",
            std::string(text));
  write_file(go_on, "\n");
  EXPECT_EQ(start, waitpid(start, nullptr, 0));
  close(said[0]);
  expect_old_data();
  expect_tidy();
}

TEST_F(DataBackupTest, IsReadIfAnotherProgramDoesNotEndItsInstall)
{
  std::string said;
  {
    const OtherInstall other(*this);
    said = output_of([this] {
      const fs::path data = DataBackup::recover(local);
      EXPECT_EQ("old", read_file(data / "a.csv"));
      EXPECT_FALSE(file_exists(data / "b.csv"));
    });
  }
  EXPECT_EQ("Another program is installing data in " + local + "; waiting for up to 5 seconds.\n",
            said);
  EXPECT_EQ(restored, recover());
}

TEST_F(DataBackupTest, FailsIfAnotherProgramDoesNotEndItsInstall)
{
  const OtherInstall other(*this);
  output_of([this] {
    const DataBackup backup(local);
    EXPECT_EQ(std::errc::device_or_resource_busy, backup.failure());
  });
  EXPECT_EQ("new", read_file(a_csv)) << "the other program's";
}
