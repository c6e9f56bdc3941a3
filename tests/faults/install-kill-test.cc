// Kills the program, and each command that it starts, at each system call of an install of data.
#include "core/my-app.h"
#include "data/data-backup.h"
#include "data/data-file-info.h"
#include "support/output.h"
#include "support/window-fixture.h"

#include <cerrno>
#include <functional>
#include <set>
#include <string>

#include "faults/faulty-calls.h"
#include "faults/killed-process.h"
#include "faults/local-data.h"

namespace {

using Sets = std::set<LocalData::Set>;
using Action = std::function<void()>;
// Runs an action in a copy of this process and kills one of its processes before the `nth` system
// call of that process. Returns false if there are fewer calls.
using Killer = std::function<bool(int nth, const Action& action)>;

class KilledInAnInstall : public WindowTest
{
public:
  void SetUp() override
  {
    output_of([this] { create_window(); });
    my_app->local_data_dir = application_dir.root + "/local";
    data = std::make_unique<LocalData>(my_app->local_data_dir, application_dir.root);
  }

  // For each system call: prepares the directory, kills `act` there, and starts. Adds what the
  // start leaves to `found` and `left`.
  void kill_everywhere(const Killer& killed, const Action& prepare, const Action& act)
  {
    bool was_killed = true;
    for (; was_killed; ++tried) {
      SCOPED_TRACE("killed at call " + std::to_string(tried + 1));
      prepare();
      was_killed = killed(tried + 1, act);
      start();
      found.insert(data->now());
      left.insert(data->leftovers());
    }
    EXPECT_GT(tried, 3);
    RecordProperty("tried", tried);
  }

  void start() const
  {
    RetCode result = RET_INTERNAL_ERROR;
    const std::string printed = output_of([&] { result = my_app->read_data_files(); });
    EXPECT_EQ(RET_SUCCESS, result);
    const LocalData::Set now = data->now();
    if (now == LocalData::TORN)
      return; // its timestamp may be that of either set
    const std::string timestamp = now == LocalData::OLD   ? LocalData::old_timestamp
                                  : now == LocalData::NEW ? LocalData::new_timestamp
                                                          : "20210101000000";
    EXPECT_EQ(timestamp, my_app->data_file_info->timestamp) << printed;
  }

  std::unique_ptr<LocalData> data;
  Sets found;                 // the sets after the starts
  std::set<std::string> left; // the other files after the starts
  int tried = 0;

  const Action old_data = [this] { data->start_with_old_data(); };
  const Action nothing = [this] { data->start_with_nothing(); };
  const Action install = [this] { data->install(LocalData::COMPLETE); };
  const Action install_cut = [this] { data->install(LocalData::TRUNCATED); };
};

Killer command(const std::string& name)
{
  return [name](int nth, const Action& action) {
    return command_killed_at_system_call(name, nth, action);
  };
}

const std::set<std::string> none = {""};
// The temporary file with which the library replaces an existing archive.
const std::set<std::string> new_archive = {"", ".goutputstream- "};

} // namespace

TEST_F(KilledInAnInstall, TheProgramLeavesACompleteFirstCopyOrNone)
{
  kill_everywhere(killed_at_system_call, nothing, install);
  EXPECT_EQ((Sets{LocalData::NEW, LocalData::NONE}), found);
  EXPECT_EQ(none, left);
}

TEST_F(KilledInAnInstall, TheProgramLeavesTheOldDataOrTheNew)
{
  kill_everywhere(killed_at_system_call, old_data, install);
  EXPECT_EQ((Sets{LocalData::OLD, LocalData::NEW}), found);
  EXPECT_EQ(new_archive, left);
}

TEST_F(KilledInAnInstall, TheProgramLeavesTheOldDataOrTheNewWithoutHardLinks)
{
  kill_everywhere(killed_at_system_call, old_data, [this] {
    FaultyCalls faulty(data->directory);
    faulty.fail_always(Call::link, EPERM);
    install();
  });
  EXPECT_EQ((Sets{LocalData::OLD, LocalData::NEW}), found);
  EXPECT_EQ(new_archive, left);
}

TEST_F(KilledInAnInstall, TheProgramLeavesTheOldDataIfTheArchiveFails)
{
  kill_everywhere(killed_at_system_call, old_data, install_cut);
  EXPECT_EQ(Sets{LocalData::OLD}, found);
  EXPECT_EQ(new_archive, left);
}

TEST_F(KilledInAnInstall, TheProgramLeavesNothingIfTheFirstArchiveFails)
{
  kill_everywhere(killed_at_system_call, nothing, install_cut);
  EXPECT_EQ(Sets{LocalData::NONE}, found);
  EXPECT_EQ(none, left);
}

TEST_F(KilledInAnInstall, TheNextStartCompletesARestoreOfTheOldData)
{
  kill_everywhere(
      killed_at_system_call, [this] { data->start_with_torn_data(); },
      [this] { DataBackup::recover(data->directory); });
  EXPECT_EQ(Sets{LocalData::OLD}, found);
  EXPECT_EQ(none, left);
}

TEST_F(KilledInAnInstall, TarLeavesTheOldDataOrTheNew)
{
  kill_everywhere(command("tar"), old_data, install);
  EXPECT_EQ((Sets{LocalData::OLD, LocalData::NEW}), found);
  EXPECT_EQ(none, left);
}

// Only the status of tar counts. If its input ends between two files, tar treats this as the end
// of the archive, and the files so far exist.
TEST_F(KilledInAnInstall, Bzip2LeavesWhatTarCallsComplete)
{
  kill_everywhere(command("bzip2"), old_data, install);
  EXPECT_EQ(1U, found.count(LocalData::OLD));
  EXPECT_EQ(1U, found.count(LocalData::NEW));
  EXPECT_EQ(0U, found.count(LocalData::NONE));
  EXPECT_EQ(none, left);
}

TEST_F(KilledInAnInstall, TheShellLeavesTheOldDataOrTheNew)
{
  kill_everywhere(command("sh"), old_data, install);
  EXPECT_EQ((Sets{LocalData::OLD, LocalData::NEW}), found);
  EXPECT_EQ(none, left);
}
