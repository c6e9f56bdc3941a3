#include "data/data-file-info.h"
#include "server/http.h"
#include "server/tar-archive.h"
#include "server/update-test.h"

#include <algorithm>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

using Entries = std::vector<TarEntry>;

// Archives that are not what the server should send. Beside the directory of
// local data lies one that is none of the program's business.
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

  // An empty directory of local data, and the other one as it was.
  void start_over() const
  {
    fs::remove_all(my_app->local_data_dir);
    fs::remove_all(outside);
    write_file(outside + "/diary.txt", "mine");
  }

  // Installs an archive of these entries, whatever comes of it.
  RetCode install(const Entries& entries)
  {
    write_archive(served, entries);
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

  // All files of a whole data set, in the archive's directory.
  Entries whole_set() const
  {
    Entries entries;
    for (const auto& file : fs::directory_iterator(server->data))
      entries.push_back({"data-files/" + file.path().filename().string(), TarEntry::FILE,
                         read_file(file.path())});
    return entries;
  }

  std::string outside;
  std::string served;
};

using DataArchiveDeathTest = DataArchive;

const auto sym_link = TarEntry::LINK;
const auto hard_link = TarEntry::HARD_LINK;
const auto directory = TarEntry::DIRECTORY;
const auto fifo = TarEntry::FIFO;

TarEntry file(const std::string& name)
{
  return {name, TarEntry::FILE, "not mine"};
}

} // namespace

TEST_F(DataArchive, IsInstalledIfItHoldsWhatItShould)
{
  offer_new_data();
  EXPECT_EQ(RET_DATA_INSTALLED, install(whole_set()));
  EXPECT_EQ("20220202000000", my_app->data_file_info->timestamp);
}

TEST_F(DataArchive, WithoutTheMetadataFileChangesNothingInUse)
{
  EXPECT_EQ(RET_DATA_INSTALLED, install({file("data-files/habitat.csv")}));
  EXPECT_EQ("20210101000000", my_app->data_file_info->timestamp);
}

TEST_F(DataArchive, WritesNothingOutsideTheLocalDirectory)
{
  const struct {
    const char* why;
    Entries entries;
  } cases[] = {
      {"up", {file("../outside/diary.txt")}},
      {"up and new", {file("../new.txt")}},
      {"up from within", {file("data-files/../../outside/diary.txt")}},
      {"up by a directory", {{"..", directory, ""}, file("../outside/new.txt")}},
      {"absolute", {file(outside + "/diary.txt")}},
      {"absolute and new", {file(outside + "/new.txt")}},
      {"link", {{"data-files", sym_link, outside}, file("data-files/diary.txt")}},
      {"relative link", {{"data-files", sym_link, "../outside"}, file("data-files/new.txt")}},
      {"link to the file", {{"a.csv", sym_link, outside + "/diary.txt"}, file("a.csv")}},
      {"link to a link",
       {{"a", sym_link, "b"},
        {"b", sym_link, "../outside"},
        file("a/diary.txt"),
        file("b/new.txt")}},
      {"link by a link",
       {{"a", sym_link, "."},
        {"a/b", sym_link, "../outside"},
        file("a/b/new.txt"),
        file("b/diary.txt")}},
      {"link and a directory",
       {{"a", sym_link, outside}, {"a", directory, ""}, file("a/new.txt"), file("a/diary.txt")}},
      {"hard link",
       {{"data-files/a.csv", hard_link, outside + "/diary.txt"}, file("data-files/a.csv")}},
      {"relative hard link",
       {{"data-files/a.csv", hard_link, "../outside/diary.txt"}, file("data-files/a.csv")}},
      {"hard link by a link",
       {{"l", sym_link, "../outside"}, {"a.csv", hard_link, "l/diary.txt"}, file("a.csv")}},
      {"hard link to a link",
       {{"l", sym_link, "../outside"},
        {"h", hard_link, "l"},
        file("h/diary.txt"),
        file("l/new.txt")}},
      {"link in place of the archive",
       {{"current-offline-data.tar.bz2", sym_link, outside + "/diary.txt"}}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    start_over();
    install(c.entries);
    expect_outside_untouched();
    // What the first one left must not lead the second one out either.
    install(c.entries);
    expect_outside_untouched();
  }
}

TEST_F(DataArchive, WritesNothingThroughALinkThatAnEarlierOneLeft)
{
  const struct {
    const char* why;
    Entries first;
    Entries second;
  } cases[] = {
      {"directory", {{"data-files", sym_link, outside}}, {file("data-files/diary.txt")}},
      {"relative", {{"data-files", sym_link, "../outside"}}, {file("data-files/new.txt")}},
      {"deep", {{"data-files/a/b", sym_link, outside}}, {file("data-files/a/b/new.txt")}},
      {"file",
       {{"data-files/a.csv", sym_link, outside + "/diary.txt"}},
       {file("data-files/a.csv")}},
      {"by a hard link",
       {{"data-files", sym_link, outside}},
       {{"h", hard_link, "data-files/diary.txt"}, file("h")}},
      {"archive",
       {{"current-offline-data.tar.bz2", sym_link, outside + "/diary.txt"}},
       {file("a")}},
      {"archive, new",
       {{"current-offline-data.tar.bz2", sym_link, outside + "/new.txt"}},
       {file("a")}},
      {"former copy", {{"former-data-files", sym_link, outside}}, {file("data-files/a.csv")}},
      {"own directory", {{".", sym_link, outside}}, {file("new.txt")}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    start_over();
    install(c.first);
    expect_outside_untouched();
    install(c.second);
    expect_outside_untouched();
  }
}

TEST_F(DataArchive, LeavesTheUsersOwnDirectoryAloneThatALinkLeadsTo)
{
  fs::create_directories(my_app->local_data_dir);
  fs::create_directory_symlink(outside, my_app->local_data_dir + "/data-files");
  EXPECT_EQ(RET_DATA_INSTALLED, install(whole_set()));
  EXPECT_FALSE(fs::is_symlink(my_app->local_data_dir + "/data-files"));
  expect_outside_untouched();
}

TEST_F(DataArchive, PutsTheOldDataBackIfOneOfItsEntriesIsRefused)
{
  offer_new_data();
  install(whole_set());
  Entries entries = whole_set();
  for (auto& entry : entries)
    entry.contents = "spoilt=";
  entries.push_back(file("../new.txt"));
  EXPECT_EQ(RET_FAILURE, install(entries));
  expect_outside_untouched();
  EXPECT_EQ(RET_SUCCESS, my_app->read_data_files());
  EXPECT_EQ("20220202000000", my_app->data_file_info->timestamp);
}

TEST_F(DataArchive, IsNotWaitedForWhereAPipeStandsForAFile)
{
  EXPECT_EQ(RET_DATA_INSTALLED, install({{"data-files/data-file-info.txt", fifo, ""}}));
  EXPECT_EQ("20210101000000", my_app->data_file_info->timestamp);
  EXPECT_EQ(RET_DATA_INSTALLED, install({{"current-offline-data.tar.bz2", fifo, ""}}));
  EXPECT_EQ(RET_DATA_INSTALLED, install({file("a")})) << "nor is it written to";
}

// The child process starts over, since a display cannot be shared.
TEST_F(DataArchiveDeathTest, EndsTheProgramWhereAPipeStandsForATable)
{
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  setenv("ASAN_OPTIONS", "detect_leaks=0", 1);
  const auto install_pipe = [this] {
    offer_new_data();
    Entries entries = whole_set();
    entries.push_back({"data-files/habitat.csv", fifo, ""});
    install(entries);
  };
  EXPECT_EXIT(install_pipe(), testing::ExitedWithCode(1),
              "FATAL ERROR: Unable to read new data files");
}
