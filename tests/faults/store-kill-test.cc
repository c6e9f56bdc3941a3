// Kills the program at each system call of a save and of a move.
#include "store/saving-test.h"
#include "ui/survey-window.h"

#include <cerrno>
#include <filesystem>
#include <functional>
#include <map>
#include <set>
#include <string>

#include "faults/faulty-calls.h"
#include "faults/killed-process.h"

namespace fs = std::filesystem;

namespace {

// The contents of a file of the store after the end of the program.
enum class Contents { old_document, new_document };
using State = std::map<std::string, Contents>;

class KilledInTheMiddle : public SavingTest
{
public:
  // Keeps the window hidden, because its copies share the connection to the display.
  void SetUp() override
  {
    create_window();
    enter_survey();
    root = my_app->get_survey_dir(MyApp::WD_ROOT);
    pristine = root.string() + "-before";
  }

  void save_and_change()
  {
    save_quietly(*window, MyApp::WD_IN_PROGRESS);
    old_text = window->survey.xml_current.raw();
    window->survey.abundances = {{10, 3}, {12, 1}};
  }

  // Restores the store, including the times of its files, by which the program detects changes.
  void restore() const
  {
    fs::remove_all(root);
    fs::copy(pristine, root, fs::copy_options::recursive);
    for (const auto& entry : fs::recursive_directory_iterator(pristine)) {
      if (entry.is_regular_file())
        fs::last_write_time(root / fs::relative(entry.path(), pristine), entry.last_write_time());
    }
  }

  // Returns the documents of the store. Expects that all other files are known temporary files.
  State state_of_store()
  {
    State state;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
      if (entry.is_directory())
        continue;
      const std::string path = entry.path().string();
      if (entry.path().filename().string().rfind(".goutputstream-", 0) == 0) {
        ++leftovers; // the temporary file with which the library replaces a file
        continue;
      }
      if (is_unnamed(entry.path())) {
        ++leftovers;
        continue;
      }
      const std::string text = read_file(path);
      EXPECT_TRUE(text == old_text || text == new_text) << path << " contains:\n" << text;
      state[path] = text == old_text ? Contents::old_document : Contents::new_document;
    }
    return state;
  }

  // Returns whether a file is a temporary one of the code for plain POSIX. It is complete, but it
  // does not have the name of a survey yet. It must not be in a directory of a state, where the
  // program would list it.
  bool is_unnamed(const fs::path& path) const
  {
    return path.parent_path() == root &&
           path.filename().string().rfind(".mavo-survey-unnamed-", 0) == 0;
  }

  // Kills `act` at each system call. Expects a document after each kill if there was one before,
  // and after a run without a kill.
  void kill_everywhere(const std::function<void()>& act)
  {
    Glib::ustring error_text;
    window->generate_xml_string(error_text, false);
    new_text = window->survey.xml_current.raw();
    fs::copy(root, pristine, fs::copy_options::recursive);
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
      if (entry.is_regular_file())
        fs::last_write_time(pristine / fs::relative(entry.path(), root), entry.last_write_time());
    }
    std::set<State> states;
    for (bool was_killed = true; was_killed; ++tried) {
      SCOPED_TRACE("killed at call " + std::to_string(tried + 1));
      restore();
      was_killed = killed_at_system_call(tried + 1, act);
      const State state = state_of_store();
      EXPECT_TRUE(!state.empty() || (old_text.empty() && was_killed));
      states.insert(state);
    }
    EXPECT_GT(tried, 3);
    EXPECT_GT(states.size(), 1U) << "all kills left the same state";
    for (const auto& state : states)
      expect_usable(state);
    RecordProperty("tried", tried);
    RecordProperty("leftovers", leftovers);
  }

  // Expects that a new window can use this store.
  void expect_usable(const State& state)
  {
    for (const auto& [path, contents] : state) {
      write_file(path, contents == Contents::old_document ? old_text : new_text);
      EXPECT_NE("", my_app->get_survey_description(path, nullptr));
      EXPECT_EQ(RET_SUCCESS, SurveyWindow::create(*my_app)->do_open(path));
    }
  }

  fs::path root, pristine;
  std::string old_text, new_text;
  int tried = 0;
  int leftovers = 0;
};

} // namespace

TEST_F(KilledInTheMiddle, AFirstSaveLeavesACompleteDocumentOrNone)
{
  kill_everywhere([&] { window->do_save(MyApp::WD_IN_PROGRESS, SurveyWindow::SAVE_QUIET); });
}

TEST_F(KilledInTheMiddle, AnOverwritingSaveLeavesTheOldDocumentOrTheNew)
{
  save_and_change();
  kill_everywhere([&] { window->do_save(MyApp::WD_IN_PROGRESS, SurveyWindow::SAVE_QUIET); });
}

TEST_F(KilledInTheMiddle, AChangeOfStateLeavesTheOldDocumentOrTheNew)
{
  save_and_change();
  kill_everywhere([&] { window->do_save(MyApp::WD_READY_TO_UPLOAD, SurveyWindow::SAVE_QUIET); });
}

TEST_F(KilledInTheMiddle, AMoveLeavesTheCompleteDocument)
{
  save_and_change();
  kill_everywhere([&] {
    std::string path = window->survey.filename;
    my_app->move_survey_to(MyApp::WD_UPLOADED, path);
  });
}

TEST_F(KilledInTheMiddle, AMoveByACopyLeavesTheCompleteDocument)
{
  save_and_change();
  kill_everywhere([&] {
    FaultyCalls faulty(root.string());
    faulty.fail_always(Call::rename, EXDEV);
    std::string path = window->survey.filename;
    my_app->move_survey_to(MyApp::WD_UPLOADED, path);
  });
}

TEST_F(KilledInTheMiddle, AMoveThatReplacesNothingLeavesTheCompleteDocument)
{
  save_and_change();
  kill_everywhere([&] {
    std::string path = window->survey.filename;
    my_app->move_survey_to(MyApp::WD_READY_TO_UPLOAD, path);
  });
}

TEST_F(KilledInTheMiddle, AMoveByACopyThatReplacesNothingLeavesTheCompleteDocument)
{
  save_and_change();
  kill_everywhere([&] {
    FaultyCalls faulty(root.string());
    faulty.fail_always(Call::rename, EXDEV);
    std::string path = window->survey.filename;
    my_app->move_survey_to(MyApp::WD_READY_TO_UPLOAD, path);
  });
}
