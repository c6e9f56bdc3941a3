// Pauses the other program before each of its system calls while this program does its complete
// part.
#include "ui/survey-window.h"

#include <algorithm>
#include <filesystem>

#include "faults/killed-process.h"
#include "faults/other-program.h"

namespace fs = std::filesystem;

namespace {

using Texts = std::vector<std::string>;

const auto in_progress = MyApp::WD_IN_PROGRESS;
const auto ready = MyApp::WD_READY_TO_UPLOAD;

class BetweenTwoSystemCalls : public TwoPrograms
{
public:
  // For each system call: prepares the store, runs both actions, and checks the result.
  void try_everywhere(const std::function<void()>& prepare, const std::function<void()>& they_do,
                      const std::function<void()>& i_do, const std::function<void()>& check)
  {
    int tried = 0;
    const auto try_next = [&] {
      SCOPED_TRACE("held at call " + std::to_string(tried + 1));
      fs::remove_all(my_app->survey_root);
      forget_file(*mine);
      forget_file(*theirs);
      prepare();
      const bool was_held = held_at_system_call(tried + 1, they_do, i_do);
      if (was_held) {
        EXPECT_EQ(Texts(), files_that_are_neither());
        check();
      }
      return was_held;
    };
    while (try_next())
      ++tried;
    EXPECT_GT(tried, 4);
    RecordProperty("tried", tried);
  }

  // Resets the state of the file, as if the survey had just been entered or opened.
  static void forget_file(SurveyWindow& window, const std::string& path = "")
  {
    window.survey.filename = path;
    window.survey.file_etag.clear();
  }

  void both_open_one()
  {
    save_quietly(*mine, in_progress);
    forget_file(*mine, mine->survey.filename);
    forget_file(*theirs, mine->survey.filename);
  }
};

} // namespace

TEST_F(BetweenTwoSystemCalls, TwoNewSurveysWithTheSameNameBothStay)
{
  try_everywhere([] {}, [&] { save_quietly(*theirs, in_progress); },
                 [&] { save_quietly(*mine, in_progress); },
                 [&] {
                   Texts both = {my_text, their_text};
                   std::sort(both.begin(), both.end());
                   EXPECT_EQ(both, texts_in(in_progress));
                   EXPECT_EQ(my_text, read_file(mine->survey.filename));
                 });
}

TEST_F(BetweenTwoSystemCalls, OneSurveySavedByBothIsComplete)
{
  try_everywhere([&] { both_open_one(); }, [&] { save_quietly(*theirs, in_progress); },
                 [&] { save_quietly(*mine, in_progress); },
                 [&] { EXPECT_EQ(1U, names_in(in_progress).size()); });
}

// The change of state removes the file of the old state, whatever it contains.
TEST_F(BetweenTwoSystemCalls, ASurveyWhoseStateTheOtherChangesIsComplete)
{
  try_everywhere([&] { both_open_one(); }, [&] { save_quietly(*theirs, ready); },
                 [&] { save_quietly(*mine, in_progress); },
                 [&] { EXPECT_EQ(Texts{their_text}, texts_in(ready)); });
}

TEST_F(BetweenTwoSystemCalls, ASurveyThatIsUnMarkedReplacesNoSurveyOfTheOther)
{
  const auto un_mark = [&] {
    std::string path = mine->survey.filename;
    EXPECT_EQ(RET_SUCCESS, my_app->move_survey_to(in_progress, path));
  };
  const auto expect_both = [&] {
    Texts both = {my_text, their_text};
    std::sort(both.begin(), both.end());
    EXPECT_EQ(both, texts_in(in_progress));
    EXPECT_EQ(Texts(), texts_in(ready));
  };
  try_everywhere([&] { save_quietly(*mine, ready); }, [&] { save_quietly(*theirs, in_progress); },
                 un_mark, expect_both);
  try_everywhere([&] { save_quietly(*mine, ready); }, un_mark,
                 [&] { save_quietly(*theirs, in_progress); }, expect_both);
}
