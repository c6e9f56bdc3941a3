// Lets every system call on the files of a save, a move or a delete fail once.
#include "store/saving-test.h"
#include "support/dialogs.h"
#include "ui/survey-window.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "faults/faulty-calls.h"

namespace fs = std::filesystem;

namespace {

// The calls that fail, and their errno.
constexpr std::pair<Call, int> faults[] = {
    {Call::open, ENOSPC},   {Call::write, ENOSPC},  {Call::fsync, EIO},    {Call::link, EIO},
    {Call::rename, EACCES}, {Call::unlink, EACCES}, {Call::mkdir, ENOSPC}, {Call::close, EIO},
};

// A job and its message on failure.
struct Job {
  std::string name;
  std::function<void()> prepare; // prepares the store
  std::function<bool()> act;     // returns whether it reports success
  std::string title, words;      // the message of a failure
  bool rename_never_works = false;
};

class FaultsInTheStore : public SavingTest
{
public:
  void SetUp() override
  {
    SavingTest::SetUp();
    enter_survey();
    root = my_app->get_survey_dir(MyApp::WD_ROOT);
  }

  // Empties the store, as if the window had never saved.
  void start_over()
  {
    fs::remove_all(root);
    old_text.clear();
    window->survey.filename.clear();
    window->survey.file_etag.clear();
    window->survey.xml_last_saved.clear();
    window->survey.abundances = {{10, 2}, {11, 1}};
  }

  void save_and_change()
  {
    start_over();
    save_quietly(*window, MyApp::WD_IN_PROGRESS);
    old_text = window->survey.xml_current.raw();
    window->survey.abundances = {{10, 3}, {12, 1}};
  }

  bool save(MyApp::WhichDir which) const
  {
    return window->do_save(which, SurveyWindow::SAVE_QUIET) == RET_SUCCESS;
  }

  std::map<std::string, std::string> files() const
  {
    std::map<std::string, std::string> found;
    if (!fs::exists(root))
      return found;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
      if (!entry.is_directory())
        found[entry.path().string()] = read_file(entry.path().string());
    }
    return found;
  }

  // Runs the job with this fault. Checks its messages and files.
  void try_fault(const Job& job, Call call, int nth, int number)
  {
    SCOPED_TRACE(job.name + ": " + name_of(call) + " number " + std::to_string(nth) + " fails");
    job.prepare();
    bool succeeded = false;
    const auto seen = answer_all_dialogs(Gtk::RESPONSE_ACCEPT, [&] {
      FaultyCalls faulty(root);
      if (job.rename_never_works)
        faulty.fail_always(Call::rename, EXDEV);
      faulty.fail_once(call, nth, number);
      succeeded = job.act();
    });
    ++tried;
    expect_reported(job, succeeded, seen);
    expect_complete(succeeded);
  }

  void expect_reported(const Job& job, bool succeeded, std::vector<SeenDialog> seen) const
  {
    seen.erase(std::remove_if(seen.begin(), seen.end(),
                              [](const auto& dialog) {
                                return dialog.title == "Really delete saved survey?";
                              }),
               seen.end());
    ASSERT_EQ(succeeded ? 0U : 1U, seen.size());
    if (succeeded)
      return;
    EXPECT_EQ(job.title, seen[0].title);
    EXPECT_NE(std::string::npos, seen[0].text.raw().find(job.words)) << seen[0].text;
  }

  // Expects the old document or the new one, and no other file.
  void expect_complete(bool succeeded) const
  {
    const std::string& new_text = window->survey.xml_current.raw();
    bool has_old = false;
    bool has_new = false;
    for (const auto& [path, text] : files()) {
      has_old = has_old || text == old_text;
      has_new = has_new || text == new_text;
      EXPECT_TRUE(text == old_text || text == new_text) << path << " contains:\n" << text;
    }
    if (!succeeded && !old_text.empty()) { // the library may fail after the replacement
      EXPECT_TRUE(has_old || has_new);
    }
    if (succeeded && !deletes) {
      EXPECT_TRUE(has_new);
    }
  }

  void try_everything(const Job& job)
  {
    for (const auto& [call, number] : faults) {
      const int calls = count(job, call);
      for (int nth = 1; nth <= calls; ++nth)
        try_fault(job, call, nth, number);
    }
    EXPECT_GT(tried, 0);
    RecordProperty("tried", tried);
  }

  std::string root;
  std::string old_text; // the previous document
  bool deletes = false;
  int tried = 0;

private:
  int count(const Job& job, Call call) const
  {
    job.prepare();
    int calls = 0;
    answer_all_dialogs(Gtk::RESPONSE_ACCEPT, [&] {
      FaultyCalls faulty(root);
      if (job.rename_never_works)
        faulty.fail_always(Call::rename, EXDEV);
      EXPECT_TRUE(job.act());
      calls = faulty.count(call);
    });
    return calls;
  }
};

const char* const not_saved = "ERROR: Survey NOT Saved!!!";

} // namespace

TEST_F(FaultsInTheStore, LeaveACompleteFirstDocumentOrNone)
{
  try_everything({"first save", [&] { start_over(); },
                  [&] {
                    const bool saved = save(MyApp::WD_IN_PROGRESS);
                    EXPECT_EQ(saved, !window->file_needs_saving());
                    EXPECT_EQ(saved, !files().empty());
                    return saved;
                  },
                  not_saved, "FAILED to save survey to "});
}

TEST_F(FaultsInTheStore, LeaveTheOldDocumentOrTheNewWhenOneIsOverwritten)
{
  try_everything({"overwriting", [&] { save_and_change(); },
                  [&] {
                    const bool saved = save(MyApp::WD_IN_PROGRESS);
                    EXPECT_EQ(saved, !window->file_needs_saving());
                    return saved;
                  },
                  not_saved, "FAILED to save survey to "});
}

TEST_F(FaultsInTheStore, LeaveTheOldDocumentOrTheNewWhenItsStateChanges)
{
  try_everything({"change of state", [&] { save_and_change(); },
                  [&] {
                    const bool saved = save(MyApp::WD_READY_TO_UPLOAD);
                    EXPECT_EQ(saved, !window->file_needs_saving());
                    return saved;
                  },
                  not_saved, "FAILED to save survey to "});
}

TEST_F(FaultsInTheStore, LeaveAMovedSurveyInOneOfItsPlaces)
{
  const struct {
    const char* name;
    bool across_file_systems;
    MyApp::WhichDir to;
  } cases[] = {
      {"moving", false, MyApp::WD_UPLOADED},
      {"moving by a copy", true, MyApp::WD_UPLOADED},
      {"moving without replacing", false, MyApp::WD_READY_TO_UPLOAD},
      {"moving by a copy without replacing", true, MyApp::WD_READY_TO_UPLOAD},
  };
  for (const auto& c : cases) {
    Job job;
    job.name = c.name;
    job.rename_never_works = c.across_file_systems;
    job.prepare = [&] {
      save_and_change();
      window->survey.xml_current = old_text; // a move writes no new document
    };
    job.act = [&] {
      std::string path = window->survey.filename;
      const bool moved = my_app->move_survey_to(c.to, path) == RET_SUCCESS;
      EXPECT_EQ(moved, path != window->survey.filename);
      EXPECT_EQ(old_text, read_file(path));
      return moved;
    };
    job.title = "Error occurred";
    job.words = "Failed to move survey file from ";
    try_everything(job);
  }
}

TEST_F(FaultsInTheStore, LeaveASurveyThatCannotBeDeleted)
{
  deletes = true;
  try_everything({"deleting",
                  [&] {
                    save_and_change();
                    window->survey.xml_current = old_text;
                  },
                  [&] {
                    const bool deleted = window->maybe_delete_survey(window->survey.filename);
                    EXPECT_EQ(deleted, !file_exists(window->survey.filename));
                    return deleted;
                  },
                  "Deletion Failed", "Failed to delete survey file "});
}
