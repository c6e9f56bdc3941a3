#include "core/version.h"
#include "data/data-file-info.h"
#include "server/http.h"
#include "server/update-test.h"
#include "store/full-disk.h"
#include "support/output.h"

#include <glibmm/miscutils.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <regex>

namespace fs = std::filesystem;

namespace {

const char* const old_timestamp = "20210101000000";
const char* const new_timestamp = "20220202000000";

// Returns names and contents of all files below a directory, in one text.
std::string contents_of(const std::string& directory)
{
  Names lines;
  for (const auto& entry : fs::recursive_directory_iterator(directory))
    lines.push_back(entry.path().string() + ": " +
                    (entry.is_regular_file() ? read_file(entry.path()) : "") + "\n");
  std::sort(lines.begin(), lines.end());
  std::string text;
  for (const auto& line : lines)
    text += line;
  return text;
}

// Sets the search path of commands during its lifetime.
class SearchPath
{
public:
  explicit SearchPath(const std::string& path) : previous(Glib::getenv("PATH"))
  {
    setenv("PATH", path.c_str(), 1);
  }
  ~SearchPath() { setenv("PATH", previous.c_str(), 1); }
  SearchPath(const SearchPath&) = delete;
  SearchPath& operator=(const SearchPath&) = delete;

private:
  std::string previous;
};

// Limits the process, during its lifetime, to `spare` more open files.
class FewFiles
{
public:
  explicit FewFiles(rlim_t spare)
  {
    getrlimit(RLIMIT_NOFILE, &before);
    const int next = dup(0); // the lowest free number
    close(next);
    const rlimit limit{static_cast<rlim_t>(next) + spare, before.rlim_max};
    setrlimit(RLIMIT_NOFILE, &limit);
  }
  ~FewFiles() { setrlimit(RLIMIT_NOFILE, &before); }
  FewFiles(const FewFiles&) = delete;
  FewFiles& operator=(const FewFiles&) = delete;

private:
  rlimit before{};
};

class DataInstall : public UpdateTest
{
public:
  void SetUp() override
  {
    UpdateTest::SetUp();
    serve_new_data({});
  }

  void serve_new_data(const std::vector<std::string>& options)
  {
    serve(options);
    offer_new_data();
  }

  std::string archive_url() const
  {
    return server->address() + "/offline-data-entry/current-offline-data.tar.bz2";
  }
  std::string archive() const { return my_app->local_data_dir + "/current-offline-data.tar.bz2"; }
  std::string local_file(const std::string& name) const
  {
    return my_app->local_data_dir + "/data-files/" + name;
  }
  std::string command() const
  {
    return "bzip2 -dkc '" + archive() + "' | tar -C '" + my_app->local_data_dir + "' -xvf - 2>&1";
  }
  // Returns the message to the user if the command ends with this status.
  static std::string failed_install(const std::string& command, const std::string& output,
                                    int status)
  {
    return "Error occurred: Failed to install data update! (" + std::to_string(status) +
           ")\n\nPlease include the following in an email to " SUPPORT_ADDRESS ":\n\nCommand: " +
           command + "\n\n" + output + "\nCommand returned " + std::to_string(status);
  }

  // Downloads as after a Yes to the offer, and answers the dialogs that follow.
  RetCode download(const std::vector<int>& answers)
  {
    const HttpSession session = open_http_session(false);
    RetCode result = RET_INTERNAL_ERROR;
    seen = answer_dialogs(answers, [&] {
      result = window->download_data_files(session.get(), archive_url().c_str());
    });
    return result;
  }

  bool uses_old_data() const { return my_app->data_file_info->timestamp == old_timestamp; }
};

// GoogleTest runs suites with this name first.
using DataInstallDeathTest = DataInstall;

const char* const no_archive = "tar: This does not look like a tar archive\n"
                               "tar: Exiting with failure status due to previous errors\n";
constexpr int tar_failed = 512; // the status of wait() for exit status 2

} // namespace

// --- success ---

TEST_F(DataInstall, UsesTheNewData)
{
  const std::string built_in = contents_of("data-files");
  EXPECT_EQ(RET_DATA_INSTALLED, download({ok}));
  EXPECT_EQ(Names{installed}, messages());
  EXPECT_EQ(std::vector<int>{ok}, seen.at(0).responses);
  EXPECT_EQ(Gtk::MESSAGE_INFO, seen.at(0).message_type);
  EXPECT_TRUE(seen.at(0).has_icon);
  EXPECT_EQ(new_timestamp, my_app->data_file_info->timestamp);
  EXPECT_EQ(read_file(server->data + "habitat.csv"), read_file(local_file("habitat.csv")));
  EXPECT_TRUE(file_exists(archive())) << "kept";
  EXPECT_EQ(built_in, contents_of("data-files")) << "the program's own directory";
}

TEST_F(DataInstall, ReplacesAnOlderCopyAndLeavesFilesThatTheArchiveLacks)
{
  EXPECT_EQ(RET_DATA_INSTALLED, download({ok}));
  const std::string first_archive = read_file(archive());
  write_file(local_file("more.csv"), "mine");
  offer_new_data("20230303000000");
  EXPECT_EQ(RET_DATA_INSTALLED, download({ok}));
  EXPECT_EQ("20230303000000", my_app->data_file_info->timestamp);
  EXPECT_EQ("mine", read_file(local_file("more.csv")));
  EXPECT_NE(first_archive, read_file(archive()));
}

TEST_F(DataInstall, ReportsSuccessForOlderDataThanTheProgramsButDoesNotUseThem)
{
  offer_new_data("2019");
  EXPECT_EQ(RET_DATA_INSTALLED, download({ok}));
  EXPECT_EQ(Names{installed}, messages());
  EXPECT_TRUE(uses_old_data());
  EXPECT_TRUE(file_exists(local_file("data-file-info.txt")));
}

TEST_F(DataInstall, AcceptsAnArchiveThatArrivesSlowly)
{
  serve_new_data({"--archive", "trickle"});
  EXPECT_EQ(RET_DATA_INSTALLED, download({ok}));
}

TEST_F(DataInstall, TracesWhatItDoesFromLevelOneOn)
{
  const std::string traced = output_of(1, [this] { download({ok}); });
  const std::string local = my_app->local_data_dir;
  const std::regex expected("local_data_dir: " + local +
                            "\n"
                            "data version query response code is 200, type application/x-bzip2\n"
                            "received body of " +
                            std::to_string(fs::file_size(archive())) +
                            " bytes at 0x[0-9a-f]+\n"
                            "About to run: bzip2 -dkc '[^']*' \\| tar -C '[^']*' -xvf - 2>&1\n"
                            "local_data_dir: [^]*");
  EXPECT_TRUE(std::regex_match(traced, expected)) << traced;
  EXPECT_NE(std::string::npos, traced.find("About to run: " + command() + "\n"));
  EXPECT_EQ("Using data in " + local + "/data-files/ (20220202000000).\n",
            output_of(0, [this] { download({ok}); }));
}

TEST_F(DataInstall, TracesAMissingType)
{
  serve_new_data({"--archive", "status=404,without=Content-Type"});
  const std::string traced = output_of(1, [this] { download({ok}); });
  EXPECT_NE(std::string::npos,
            traced.find("data version query response code is 404, type (none)\n"))
      << traced;
}

// --- a failed download ---

TEST_F(DataInstall, ReportsAFailedDownloadAndChangesNothing)
{
  const struct {
    const char* spec;
    const char* status; // the status shown; empty: any status
  } cases[] = {
      {"status=404", "404"},
      {"status=500", "500"},
      {"status=206", "206"},
      {"type=text/plain", "200"},
      {"type=application/x-bzip2; charset=binary", "200"},
      {"type=application/X-bzip2", "200"},
      {"without=Content-Type", "200"},
      {"close=before", ""},
      {"close=middle", "200"}, // the library treats half a body as a complete one
      {"garbage", ""},
      {"long-header=1000000", ""},
      {"redirect=/nowhere", "404"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.spec);
    serve_new_data({"--archive", c.spec});
    EXPECT_EQ(RET_FAILURE, download({ok}));
    const std::string words = "Error occurred: Failed to download data update! (";
    const std::string text = messages().at(0);
    EXPECT_EQ(words + c.status, text.substr(0, words.size() + strlen(c.status)));
    EXPECT_EQ(')', text.back());
    EXPECT_TRUE(fs::is_empty(my_app->local_data_dir));
    EXPECT_TRUE(uses_old_data());
  }
}

TEST_F(DataInstall, ReportsAnAddressWithoutAServer)
{
  const HttpSession session = open_http_session(false);
  for (const char* url : {"", "nonsense", "ftp://127.0.0.1/", "http://", "http://127.0.0.1:1/"}) {
    const SeenDialog dialog = answer_next_dialog(
        ok, [&] { EXPECT_EQ(RET_FAILURE, window->download_data_files(session.get(), url)); });
    EXPECT_EQ(0U, dialog.text.find("Failed to download data update! (")) << url;
  }
  EXPECT_TRUE(uses_old_data());
}

// --- a place that cannot be written ---

TEST_F(DataInstall, ReportsThatTheArchiveCannotBeWritten)
{
  const std::string in_the_way = application_dir.root + "/file";
  write_file(in_the_way, "not a directory");
  my_app->local_data_dir = in_the_way;
  EXPECT_EQ(RET_FAILURE, download({ok}));
  EXPECT_EQ(0U, seen.at(0).text.raw().find("FAILED to write to " + archive() + "!\n"))
      << seen.at(0).text;
  EXPECT_EQ("not a directory", read_file(in_the_way));

  my_app->local_data_dir = application_dir.root + "/local";
  fs::create_directories(archive());
  EXPECT_EQ(RET_FAILURE, download({ok}));
  EXPECT_EQ(0U, seen.at(0).text.raw().find("FAILED to write to " + archive() + "!\n"));
  EXPECT_TRUE(uses_old_data());
}

TEST_F(DataInstall, LeavesTheOldCopyIfTheDiskIsFullForTheArchive)
{
  download({ok});
  const std::string before = contents_of(my_app->local_data_dir);
  offer_new_data("20230303000000");
  RetCode result = RET_INTERNAL_ERROR;
  {
    const FullDisk full(100);
    result = download({ok});
  }
  EXPECT_EQ(RET_FAILURE, result);
  EXPECT_EQ(0U, seen.at(0).text.raw().find("FAILED to write to " + archive() + "!\n"));
  EXPECT_EQ(before, contents_of(my_app->local_data_dir));
  EXPECT_EQ(new_timestamp, my_app->data_file_info->timestamp);
}

// --- a failed unpacking ---

TEST_F(DataInstall, RestoresTheOldCopyIfTheDiskIsFullForTheNewOne)
{
  constexpr std::size_t large = 200'000;
  constexpr rlim_t room = 50'000; // bytes; enough only for the packed archive
  const auto install = [this] {
    const FullDisk full(room);
    return download({ok});
  };
  write_file(server->data + "large.csv", std::string(large, 'x'));
  EXPECT_EQ(RET_FAILURE, install());
  EXPECT_EQ(0U, messages().at(0).find("Error occurred: Failed to install data update! ("))
      << messages()[0];
  EXPECT_NE(std::string::npos, messages().at(0).find("large.csv: Wrote only")) << messages()[0];
  EXPECT_TRUE(uses_old_data());
  EXPECT_TRUE(file_exists(archive()));
  EXPECT_FALSE(file_exists(local_file(""))) << "half a copy would be used from now on";

  serve_new_data({});
  download({ok});
  const std::string before = contents_of(my_app->local_data_dir + "/data-files");
  offer_new_data("20230303000000");
  write_file(server->data + "large.csv", std::string(large, 'x'));
  EXPECT_EQ(RET_FAILURE, install());
  EXPECT_EQ(before, contents_of(my_app->local_data_dir + "/data-files"));
  EXPECT_EQ(new_timestamp, my_app->data_file_info->timestamp);
  EXPECT_EQ(RET_SUCCESS, my_app->read_data_files()) << "as at the next start";
  EXPECT_EQ(new_timestamp, my_app->data_file_info->timestamp);
}

TEST_F(DataInstall, ShowsTheCommandItsOutputAndItsStatus)
{
  for (const char* damage : {"not-bzip2", "not-tar", "empty", "truncated"}) {
    serve_new_data({"--archive", std::string("damaged=") + damage});
    std::string printed;
    EXPECT_EQ(RET_FAILURE, [&] {
      RetCode result = RET_INTERNAL_ERROR;
      printed = output_of([&] { result = download({ok}); });
      return result;
    }()) << damage;
    const std::string expected = failed_install(command(), no_archive, tar_failed);
    EXPECT_EQ(Names{expected}, messages()) << damage;
    EXPECT_EQ(Gtk::MESSAGE_WARNING, seen.at(0).message_type);
    EXPECT_NE(std::string::npos, seen.at(0).markup.raw().find("<a href=\"mailto:" SUPPORT_ADDRESS
                                                              "\">" SUPPORT_ADDRESS "</a>"));
    EXPECT_NE(std::string::npos, printed.find("output:\n\n\nPlease include")) << printed;
    EXPECT_NE(std::string::npos, printed.find("Command: " + command() + "\n\n" + no_archive));
    EXPECT_TRUE(file_exists(archive()));
    EXPECT_TRUE(uses_old_data());
  }
}

TEST_F(DataInstall, ShowsTheEndsOfALongOutputAndAllTextAroundIt)
{
  constexpr int lines = 3000;
  const std::string commands = application_dir.root + "/commands";
  write_file(commands + "/tar",
             "#!/bin/sh\nseq -f 'cannot write a & <b> %g' " + std::to_string(lines) + "\nexit 2\n");
  fs::permissions(commands + "/tar", fs::perms::owner_all);
  const SearchPath replaced(commands + ":" + Glib::getenv("PATH"));
  testing::internal::CaptureStderr();
  const std::string printed = output_of([&] { download({ok}); });
  const std::string reported = testing::internal::GetCapturedStderr();

  const std::string last_line = "cannot write a & <b> " + std::to_string(lines) + "\n";
  const std::string end = last_line + "\nCommand returned 512";
  const std::string text = messages().at(0);
  EXPECT_EQ(0U, text.find("Error occurred: Failed to install data update! (512)\n\nPlease include "
                          "the following in an email to " SUPPORT_ADDRESS ":\n\nCommand: " +
                          command() + "\n\ncannot write a & <b> 1\n"))
      << text.substr(0, 300);
  EXPECT_EQ(text.size() - end.size(), text.rfind(end));
  EXPECT_NE(std::string::npos, text.find(" lines left out \u2026\n"));
  EXPECT_LT(text.size(), 20000U);
  EXPECT_NE(std::string::npos, seen.at(0).markup.raw().find("<a href=\"mailto:" SUPPORT_ADDRESS));
  for (const auto& output : {printed, reported}) {
    EXPECT_NE(std::string::npos, output.find("\ncannot write a & <b> 1500\n"));
    EXPECT_NE(std::string::npos, output.find(end));
    EXPECT_NE(std::string::npos, output.find("<a href=\"mailto:" SUPPORT_ADDRESS "\">"));
  }
}

TEST_F(DataInstall, ShowsAmpersandsAndBracketsInPathsLiterally)
{
  serve_new_data({"--archive", "damaged=not-tar"});
  for (const char* name : {"/a&b", "/a&amp;b", "/a<b>&c", "/a</b"}) {
    my_app->local_data_dir = application_dir.root + name;
    EXPECT_EQ(RET_FAILURE, download({ok})) << name;
    EXPECT_EQ(Names{failed_install(command(), no_archive, tar_failed)}, messages());
  }
}

// The quotation mark ends the path in the command line.
TEST_F(DataInstall, FailsInADirectoryWithASingleQuote)
{
  my_app->local_data_dir = application_dir.root + "/o'brien";
  EXPECT_EQ(RET_FAILURE, download({ok}));
  const std::string text = messages().at(0);
  EXPECT_EQ(0U, text.find("Error occurred: Failed to install data update! (")) << text;
  EXPECT_NE(std::string::npos, text.find("Command: " + command() + "\n\n")) << text;
  EXPECT_TRUE(file_exists(archive()));
  EXPECT_TRUE(uses_old_data());
}

TEST_F(DataInstall, FailsWithoutTheCommands)
{
  constexpr int not_found = 127 << 8;
  const std::string commands = application_dir.root + "/commands";
  fs::create_directories(commands);
  {
    const SearchPath nowhere(commands);
    EXPECT_EQ(RET_FAILURE, download({ok}));
  }
  EXPECT_NE(std::string::npos, messages().at(0).find("(" + std::to_string(not_found) + ")"));
  EXPECT_NE(std::string::npos, messages().at(0).find("tar: not found"));

  fs::create_symlink("/bin/tar", commands + "/tar");
  {
    const SearchPath only_tar(commands);
    EXPECT_EQ(RET_FAILURE, download({ok}));
  }
  EXPECT_EQ(Names{failed_install(command(), no_archive, tar_failed)}, messages());
  EXPECT_TRUE(uses_old_data());
}

// At this point the connection is open. Writing the archive needs one more file, and a command
// needs two.
TEST_F(DataInstall, FailsIfTheCommandCannotBeStarted)
{
  constexpr int not_started = -77;
  const HttpSession session = open_http_session(false);
  http_get(*session, archive_url());
  RetCode result = RET_INTERNAL_ERROR;
  seen = answer_dialogs({ok}, [&] {
    const FewFiles few(2); // the second is the lock of the directory
    result = window->download_data_files(session.get(), archive_url().c_str());
  });
  EXPECT_EQ(RET_FAILURE, result);
  EXPECT_EQ(Names{failed_install(command(), "", not_started)}, messages());
  EXPECT_TRUE(file_exists(archive()));
  EXPECT_TRUE(uses_old_data());
}

// --- new data that do not load ---

TEST_F(DataInstallDeathTest, EndsTheProgramIfAFileOfTheDataIsMissing)
{
  // The child process starts again, because it cannot share the display. It ends before it can
  // remove its directories.
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  setenv("ASAN_OPTIONS", "detect_leaks=0", 1);
  const auto install = [this] {
    fs::remove(server->data + "habitat.csv");
    answer_next_dialog(Gtk::RESPONSE_CLOSE, [this] {
      const HttpSession session = open_http_session(false);
      window->download_data_files(session.get(), archive_url().c_str());
    });
  };
  EXPECT_EXIT(install(), testing::ExitedWithCode(1),
              "FATAL ERROR: Unable to read new data files; you may need to re-install the app.  "
              "Sorry!!  :-\\(");
}
