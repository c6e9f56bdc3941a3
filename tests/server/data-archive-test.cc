#include "data/data-file-info.h"
#include "server/hostile-archives.h"
#include "server/http.h"
#include "server/tar-archive.h"
#include "server/update-test.h"
#include "store/full-disk.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <random>

#include "cli/data-pack.h"

namespace fs = std::filesystem;

namespace {

using Entries = std::vector<TarEntry>;

// Tests archives that the server should not send. The program must not change `outside`, which is
// another directory beside that of the local data.
class DataArchive : public UpdateTest
{
public:
  void SetUp() override
  {
    UpdateTest::SetUp();
    outside = application_dir.root + "/outside";
    served = application_dir.root + "/served.tar.bz2";
    serve({"--archive", "damaged=FILE:" + served});
    start_over();
  }

  // Removes the directory of local data and restores `outside`.
  void start_over() const
  {
    fs::remove_all(my_app->local_data_dir);
    fs::remove_all(outside);
    write_file(outside + "/diary.txt", "mine");
  }

  // Installs an archive of these entries. Returns the result.
  RetCode install(const Entries& entries)
  {
    write_archive(served, entries);
    if (truncated_size > 0)
      fs::resize_file(served, truncated_size);
    return install_served();
  }

  // Installs the current archive. Returns the result.
  RetCode install_served()
  {
    const HttpSession session = open_http_session(false);
    const std::string url = server->address() + "/offline-data-entry/current-offline-data.tar.bz2";
    RetCode result = RET_INTERNAL_ERROR;
    seen = answer_all_dialogs(Gtk::RESPONSE_OK, [&] {
      result = window->download_data_files(session.get(), url.c_str());
    });
    EXPECT_EQ(1U, seen.size());
    return result;
  }

  void expect_outside_untouched() const
  {
    EXPECT_EQ("mine", read_file(outside + "/diary.txt"));
    const fs::directory_iterator files(outside);
    EXPECT_EQ(1, std::distance(begin(files), end(files))) << "files outside";
    EXPECT_FALSE(file_exists(application_dir.root + "/new.txt"));
    EXPECT_EQ(1U, fs::hard_link_count(outside + "/diary.txt"));
  }

  // Returns entries for all files of the data set that the server offers.
  Entries complete_set() const
  {
    Entries entries;
    for (const auto& file : fs::directory_iterator(server->data))
      entries.push_back({"data-files/" + file.path().filename().string(), TarEntry::FILE,
                         read_file(file.path())});
    return entries;
  }

  std::string outside;
  std::string served;
  std::size_t truncated_size = 0; // the size to which archives are truncated; 0 for no truncation
};

using DataArchiveDeathTest = DataArchive;

const auto fifo = TarEntry::FIFO;

// Returns bytes that cannot be compressed.
std::string noise(std::size_t size)
{
  std::mt19937 random;
  std::string text(size, ' ');
  for (char& c : text)
    c = static_cast<char>(random() % 256);
  return text;
}

const auto file = hostile_file;

} // namespace

TEST_F(DataArchive, IsInstalledIfItIsComplete)
{
  offer_new_data();
  EXPECT_EQ(RET_DATA_INSTALLED, install(complete_set()));
  EXPECT_EQ("20220202000000", my_app->data_file_info->timestamp);
}

TEST_F(DataArchive, IsInstalledIfTheToolForPublishersPackedIt)
{
  offer_new_data();
  write_file(served, pack_data_set(server->data));
  EXPECT_EQ(RET_DATA_INSTALLED, install_served());
  EXPECT_EQ("20220202000000", my_app->data_file_info->timestamp);
  for (const auto& entry : fs::directory_iterator(server->data))
    EXPECT_EQ(read_file(entry.path()), read_file(my_app->local_data_dir + "/data-files/" +
                                                 entry.path().filename().string()));
}

TEST_F(DataArchive, WithoutTheMetadataFileChangesNothingInUse)
{
  EXPECT_EQ(RET_DATA_INSTALLED, install({file("data-files/habitat.csv")}));
  EXPECT_EQ("20210101000000", my_app->data_file_info->timestamp);
}

TEST_F(DataArchive, WritesNothingOutsideTheLocalDirectory)
{
  for (const auto& c : hostile_archives(outside)) {
    SCOPED_TRACE(c.why);
    start_over();
    install(c.entries);
    expect_outside_untouched();
    // Files from the first archive must not lead the second one outside either.
    install(c.entries);
    expect_outside_untouched();
  }
}

TEST_F(DataArchive, WritesNothingThroughALinkFromAnEarlierArchive)
{
  for (const auto& c : hostile_pairs(outside)) {
    SCOPED_TRACE(c.why);
    start_over();
    install(c.first);
    expect_outside_untouched();
    install(c.second);
    expect_outside_untouched();
  }
}

TEST_F(DataArchive, KeepsTheUsersDirectoryBehindALink)
{
  fs::create_directories(my_app->local_data_dir);
  fs::create_directory_symlink(outside, my_app->local_data_dir + "/data-files");
  EXPECT_EQ(RET_DATA_INSTALLED, install(complete_set()));
  EXPECT_FALSE(fs::is_symlink(my_app->local_data_dir + "/data-files"));
  expect_outside_untouched();
}

TEST_F(DataArchive, RestoresTheOldDataIfTarRefusesAnEntry)
{
  offer_new_data();
  install(complete_set());
  Entries entries = complete_set();
  for (auto& entry : entries)
    entry.contents = "spoilt=";
  entries.push_back(file("../new.txt"));
  EXPECT_EQ(RET_FAILURE, install(entries));
  expect_outside_untouched();
  EXPECT_EQ(RET_SUCCESS, my_app->read_data_files());
  EXPECT_EQ("20220202000000", my_app->data_file_info->timestamp);
}

// --- forged backups ---

TEST_F(DataArchive, CannotForgeTheBackupOfTheOldData)
{
  offer_new_data();
  install(complete_set());
  const auto hostile = forged_backups();
  for (Entries entries : hostile) {
    SCOPED_TRACE(entries.back().name);
    entries.insert(entries.begin(), {"data-files/data-file-info.txt", TarEntry::FILE,
                                     "timestamp=20990101000000\nupdated=x\n"});
    entries.push_back(file("../refused.txt")); // so that tar fails
    EXPECT_EQ(RET_FAILURE, install(entries));
    for (int start = 0; start < 2; ++start) {
      EXPECT_EQ(RET_SUCCESS, my_app->read_data_files());
      EXPECT_EQ("20220202000000", my_app->data_file_info->timestamp);
    }
    EXPECT_EQ(read_file(server->data + "habitat.csv"),
              read_file(my_app->local_data_dir + "/data-files/habitat.csv"));
  }
  RecordProperty("tried", static_cast<int>(hostile.size()));
}

TEST_F(DataArchive, CannotForgeABackupWithATruncatedArchive)
{
  offer_new_data();
  install(complete_set());
  Entries entries = complete_set();
  for (auto& entry : entries)
    entry = {"former-" + entry.name, TarEntry::FILE, "spoilt="};
  entries.push_back({"data-files/more.csv", TarEntry::FILE, noise(100'000)});
  write_archive(served, entries);
  const std::string complete = read_file(served);
  truncated_size = complete.size() * 3 / 4;
  EXPECT_EQ(RET_FAILURE, install(entries));
  for (int start = 0; start < 2; ++start) {
    EXPECT_EQ(RET_SUCCESS, my_app->read_data_files());
    EXPECT_EQ("20220202000000", my_app->data_file_info->timestamp);
  }
}

// --- links of the user ---

TEST_F(DataArchive, KeepsAUsersLinkToADirectoryIfItCannotBeUnpacked)
{
  const std::string own = application_dir.root + "/own";
  fs::copy(server->data, own);
  write_file(own + "/data-file-info.txt", "timestamp=20210909\nupdated=x\n");
  fs::create_directories(my_app->local_data_dir);
  const std::string link = my_app->local_data_dir + "/data-files";
  fs::create_directory_symlink(own, link);
  EXPECT_EQ(RET_FAILURE, install({file("data-files/habitat.csv"), file("../refused.txt")}));
  EXPECT_EQ(own, fs::read_symlink(link));
  EXPECT_EQ(read_file(server->data + "habitat.csv"), read_file(own + "/habitat.csv"));
  EXPECT_EQ(RET_SUCCESS, my_app->read_data_files());
  EXPECT_EQ("20210909", my_app->data_file_info->timestamp);
}

TEST_F(DataArchive, KeepsAUsersLinksIfItCannotBeWritten)
{
  const std::string own = application_dir.root + "/own";
  fs::copy(server->data, own);
  const std::string local = my_app->local_data_dir + "/data-files";
  fs::create_directories(my_app->local_data_dir);
  fs::copy(server->data, local);
  fs::remove(local + "/habitat.csv");
  fs::create_symlink(own + "/habitat.csv", local + "/habitat.csv");
  offer_new_data();
  write_archive(served, complete_set());
  {
    const FullDisk full(100);
    EXPECT_EQ(RET_FAILURE, install_served());
  }
  EXPECT_EQ(own + "/habitat.csv", fs::read_symlink(local + "/habitat.csv"));
  EXPECT_EQ(RET_SUCCESS, my_app->read_data_files());
}

TEST_F(DataArchive, KeepsDataBehindAUsersLink)
{
  const std::string own = application_dir.root + "/habitat.csv";
  fs::copy(server->data + "habitat.csv", own);
  const std::string local = my_app->local_data_dir + "/data-files";
  fs::create_directories(local);
  fs::create_symlink(own, local + "/habitat.csv");
  offer_new_data();
  Entries entries = complete_set();
  entries.erase(
      std::remove_if(entries.begin(), entries.end(),
                     [](const TarEntry& entry) { return entry.name == "data-files/habitat.csv"; }),
      entries.end());
  EXPECT_EQ(RET_DATA_INSTALLED, install(entries));
  EXPECT_EQ("20220202000000", my_app->data_file_info->timestamp);
  EXPECT_EQ(read_file(own), read_file(local + "/habitat.csv"));
}

// --- sizes ---

TEST_F(DataArchive, IsRefusedIfOneOfItsFilesIsTooLarge)
{
  offer_new_data();
  install(complete_set());
  const std::string set = application_dir.root + "/sparse/data-files";
  fs::create_directories(application_dir.root + "/sparse");
  fs::copy(server->data, set);
  fs::resize_file(set + "/region-info.csv", std::uintmax_t{1} << 40);
  const std::string pack =
      "tar -C '" + application_dir.root + "/sparse' -S -cjf '" + served + "' data-files";
  ASSERT_EQ(0, std::system(pack.c_str()));
  EXPECT_GT(100'000U, fs::file_size(served));
  EXPECT_EQ(RET_FAILURE, install_served());
  const std::string reason =
      "data-files/region-info.csv\nThis file has more than 33554432 bytes.\n";
  EXPECT_NE(std::string::npos, seen.front().text.raw().find(reason)) << messages().front();
  EXPECT_EQ(RET_SUCCESS, my_app->read_data_files());
  EXPECT_EQ("20220202000000", my_app->data_file_info->timestamp);
}

TEST_F(DataArchive, IsAFailedDownloadIfItIsTooLarge)
{
  write_file(served, "BZh9");
  fs::resize_file(served, 33 << 20);
  EXPECT_EQ(RET_FAILURE, install_served());
  EXPECT_EQ(Names{"Error occurred: Failed to download data update! (200)"}, messages());
  EXPECT_TRUE(fs::is_empty(my_app->local_data_dir));
}

// --- pipes ---

TEST_F(DataArchive, DoesNotBlockOnAPipeInPlaceOfAFile)
{
  EXPECT_EQ(RET_DATA_INSTALLED, install({{"data-files/data-file-info.txt", fifo, ""}}));
  EXPECT_EQ("20210101000000", my_app->data_file_info->timestamp);
  EXPECT_EQ(RET_DATA_INSTALLED, install({{"current-offline-data.tar.bz2", fifo, ""}}));
  EXPECT_EQ(RET_DATA_INSTALLED, install({file("a")})) << "does not write to the pipe";
}

// The child process restarts the program, because processes cannot share a display connection.
TEST_F(DataArchiveDeathTest, EndsTheProgramForAPipeInPlaceOfATable)
{
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  setenv("ASAN_OPTIONS", "detect_leaks=0", 1);
  const auto install_pipe = [this] {
    offer_new_data();
    Entries entries = complete_set();
    entries.push_back({"data-files/habitat.csv", fifo, ""});
    install(entries);
  };
  EXPECT_EXIT(install_pipe(), testing::ExitedWithCode(1),
              "FATAL ERROR: Unable to read new data files");
}
