// Lets every system call on the files of an install fail once. Also tests real failures of the
// commands that unpack: truncated archives, a full disk, and obstacles.
#include "data/data-file-info.h"
#include "server/http.h"
#include "server/update-test.h"
#include "store/full-disk.h"
#include "support/output.h"
#include "support/sanitizer.h"

#include <cerrno>
#include <filesystem>
#include <functional>
#include <utility>

#include "faults/faulty-calls.h"
#include "faults/local-data.h"

namespace fs = std::filesystem;

namespace {

// The calls that fail, and their errno.
constexpr std::pair<Call, int> faults[] = {
    {Call::open, ENOSPC},  {Call::write, ENOSPC},  {Call::fsync, EIO},
    {Call::link, EIO},     {Call::rename, EACCES}, {Call::unlink, EACCES},
    {Call::mkdir, ENOSPC}, {Call::close, EIO},     {Call::list, EACCES},
};

class FaultsInAnInstall : public UpdateTest
{
public:
  void SetUp() override
  {
    UpdateTest::SetUp();
    data = std::make_unique<LocalData>(my_app->local_data_dir, application_dir.root);
    serve_archive(LocalData::COMPLETE);
  }

  void serve_archive(LocalData::Archive which)
  {
    serve({"--archive", "damaged=FILE:" + data->archive(which)});
  }

  RetCode download()
  {
    const HttpSession session = open_http_session(false);
    const std::string url = server->address() + "/offline-data-entry/current-offline-data.tar.bz2";
    return window->download_data_files(session.get(), url.c_str());
  }

  // Prepares the directory and runs an install. `let_fail` chooses the calls that fail, if any.
  void install(const std::function<void(FaultyCalls&)>& let_fail)
  {
    prepare();
    before = data->now();
    output_of([this] { my_app->read_data_files(); });
    seen = answer_all_dialogs(ok, [&] {
      FaultyCalls faulty(application_dir.root); // has the data and the backup
      if (links_never_work)
        faulty.fail_always(Call::link, EPERM);
      let_fail(faulty);
      output_of([this] { succeeded = download() == RET_DATA_INSTALLED; });
      for (const auto& fault : faults)
        calls[fault.first] = faulty.count(fault.first);
    });
    ++tried;
  }

  // Expects one message of the right kind, and that the program uses the data that the message
  // implies.
  void expect_reported() const
  {
    ASSERT_EQ(1U, seen.size());
    const std::string text = messages().front();
    const std::string unwritable = "Error occurred: FAILED to write to ";
    const bool names_place = text.rfind(unwritable + data->directory, 0) == 0 ||
                             text.rfind(unwritable + data->backup(), 0) == 0;
    const std::string not_unpacked = "Error occurred: Failed to install data update! (";
    if (succeeded)
      EXPECT_EQ(installed, text);
    else
      EXPECT_TRUE(names_place || text.rfind(not_unpacked, 0) == 0) << text;
    const bool uses_new = my_app->data_file_info->timestamp == LocalData::new_timestamp;
    EXPECT_EQ(succeeded, uses_new);
  }

  // Expects that a new start finds a complete set.
  void expect_complete() const
  {
    output_of([this] { EXPECT_EQ(RET_SUCCESS, my_app->read_data_files()); });
    EXPECT_EQ(succeeded ? LocalData::NEW : before, data->now());
    EXPECT_EQ("", data->leftovers());
  }

  void try_every_call()
  {
    install([](FaultyCalls&) {});
    const auto counted = calls;
    tried = 0;
    for (const auto& [call, number] : faults) {
      for (int nth = 1; nth <= counted.at(call); nth += case_step) {
        SCOPED_TRACE(name_of(call) + std::string(" number ") + std::to_string(nth) + " fails");
        install([call = call, number = number, nth](FaultyCalls& faulty) {
          faulty.fail_once(call, nth, number);
        });
        expect_reported();
        expect_complete();
      }
    }
    EXPECT_GT(tried, 10);
    RecordProperty("tried", tried);
  }

  std::unique_ptr<LocalData> data;
  std::function<void()> prepare = [this] { data->start_with_old_data(); };
  bool links_never_work = false;

  // The last install.
  LocalData::Set before = LocalData::NONE;
  bool succeeded = false;
  std::map<Call, int> calls;
  int tried = 0;
};

} // namespace

// --- every call of the program ---

TEST_F(FaultsInAnInstall, LeaveACompleteFirstCopyOrNone)
{
  prepare = [this] { data->start_with_nothing(); };
  try_every_call();
}

TEST_F(FaultsInAnInstall, LeaveTheOldDataOrTheNew)
{
  try_every_call();
}

TEST_F(FaultsInAnInstall, LeaveTheOldDataOrTheNewWithoutHardLinks)
{
  links_never_work = true;
  try_every_call();
}

TEST_F(FaultsInAnInstall, LeaveTheOldDataIfTheArchiveFailsAsWell)
{
  serve_archive(LocalData::TRUNCATED);
  try_every_call();
}

// --- real failures of the commands ---

// tar notices a truncated archive unless it ends between two files.
TEST_F(FaultsInAnInstall, LeaveTheOldDataWhereverTheArchiveIsTruncated)
{
  const std::string complete = read_file(data->archive(LocalData::COMPLETE));
  constexpr std::size_t steps = 40;
  for (std::size_t step = 0; step < steps; ++step) {
    SCOPED_TRACE("step " + std::to_string(step));
    write_file(data->archive(LocalData::COMPLETE),
               complete.substr(0, complete.size() * step / steps));
    install([](FaultyCalls&) {});
    EXPECT_FALSE(succeeded);
    expect_reported();
    expect_complete();
  }
  RecordProperty("tried", tried);
}

TEST_F(FaultsInAnInstall, LeaveTheOldDataIfTheDiskIsFull)
{
  constexpr rlim_t room[] = {0, 100, 1000, 10'000};
  for (const rlim_t bytes : room) {
    SCOPED_TRACE(bytes);
    std::unique_ptr<FullDisk> full;
    install([&](FaultyCalls&) { full = std::make_unique<FullDisk>(bytes); });
    full.reset();
    EXPECT_FALSE(succeeded);
    expect_reported();
    expect_complete();
  }
  RecordProperty("tried", tried);
}

// A directory at the path of a file does not belong to the program, which therefore does not remove
// it.
TEST_F(FaultsInAnInstall, LeaveTheOldDataIfADirectoryIsWhereAFileShouldBe)
{
  for (const char* name : {"data-files/data-large.txt", "current-offline-data.tar.bz2"}) {
    SCOPED_TRACE(name);
    const fs::path in_the_way = fs::path(data->directory) / name;
    prepare = [&] {
      data->start_with_old_data();
      fs::remove(in_the_way);
      fs::create_directories(in_the_way / "mine");
    };
    install([](FaultyCalls&) {});
    EXPECT_FALSE(succeeded);
    expect_reported();
    expect_complete();
    EXPECT_TRUE(fs::is_directory(in_the_way / "mine"));
  }
  RecordProperty("tried", tried);
}

TEST_F(FaultsInAnInstall, LeaveTheNewDataIfPartsOfABackupRemain)
{
  for (const char* name : {"/copies/data-files/a.csv", "/torn/a/b", "/old/0/data-files/a.csv"}) {
    SCOPED_TRACE(name);
    prepare = [&] {
      data->start_with_old_data();
      write_file(data->backup() + name, "of an earlier install");
    };
    install([](FaultyCalls&) {});
    EXPECT_TRUE(succeeded);
    expect_reported();
    expect_complete();
  }
  RecordProperty("tried", tried);
}

TEST_F(FaultsInAnInstall, LeaveTheOldDataIfSomethingElseHasTheBackupsPath)
{
  prepare = [this] {
    data->start_with_old_data();
    write_file(data->backup(), "not mine");
  };
  install([](FaultyCalls&) {});
  EXPECT_FALSE(succeeded);
  expect_reported();
  EXPECT_EQ("not mine", read_file(data->backup()));
  fs::remove(data->backup());
  expect_complete();
}
