// Two programs use one store at the same time. New surveys of both remain. If one program changes a
// file that the other one has saved, the next save of the other one is refused.
#include "store/full-disk.h"
#include "support/dialogs.h"
#include "ui/listed-panel.h"
#include "ui/start-panel.h"
#include "ui/survey-panel2.h"
#include "ui/survey-window.h"

#include <algorithm>
#include <chrono>
#include <filesystem>

#include "faults/other-program.h"

namespace fs = std::filesystem;

namespace {

using Texts = std::vector<std::string>;
using Names = std::vector<std::string>;

const auto in_progress = MyApp::WD_IN_PROGRESS;
const auto ready = MyApp::WD_READY_TO_UPLOAD;
const auto uploaded = MyApp::WD_UPLOADED;
const char* const not_saved = "ERROR: Survey NOT Saved!!!";

// Both programs have opened the same file in the directory of a state.
class BothHaveOneSurveyOpen : public TwoPrograms
{
public:
  void open_in_both(MyApp::WhichDir which)
  {
    save_quietly(*mine, which);
    path = mine->survey.filename;
    theirs = open_again();
    mine = open_again();
    mine->survey.abundances = {{10, 1}};
    theirs->survey.abundances = {{10, 3}, {12, 1}};
    my_text = text_of(*mine);
    their_text = text_of(*theirs);
  }

  SurveyWindow* open_again()
  {
    EXPECT_EQ(RET_SUCCESS, create_window()->do_open(path));
    return window;
  }

  // The resolution of file times, which reveal changes, may be coarser than the time between two
  // saves here.
  void they_save(MyApp::WhichDir which)
  {
    in_another_program([&] { save_quietly(*theirs, which); });
    if (fs::exists(path))
      fs::last_write_time(path, fs::last_write_time(path) + std::chrono::seconds(1));
  }

  SeenDialog i_fail_to_save(MyApp::WhichDir which)
  {
    return answer_next_dialog(Gtk::RESPONSE_OK, [&] {
      EXPECT_EQ(RET_FAILURE, mine->do_save(which, SurveyWindow::SAVE_QUIET));
    });
  }

  std::string path;
};

class BothSaveANewSurvey : public TwoPrograms
{
public:
  // Lets my first save fail on a full disk and then the other program save.
  void they_save_where_i_failed(MyApp::WhichDir which)
  {
    {
      const FullDisk full(400);
      answer_next_dialog(Gtk::RESPONSE_OK, [&] {
        EXPECT_EQ(RET_FAILURE, mine->do_save(which, SurveyWindow::SAVE_QUIET));
      });
    }
    in_another_program([&] { save_quietly(*theirs, which); });
    ASSERT_EQ(path_of(which, natural_name), mine->survey.filename);
    ASSERT_EQ(their_text, read_file(path_of(which, natural_name)));
  }
};

} // namespace

TEST_F(BothHaveOneSurveyOpen, TheFirstSaveAfterOpeningReplacesWhatTheOtherWrote)
{
  open_in_both(in_progress);
  they_save(in_progress);
  save_quietly(*mine, in_progress); // the window has no entity tag yet
  EXPECT_EQ(my_text, read_file(path));
  EXPECT_EQ(Texts{my_text}, texts_in(in_progress));
}

TEST_F(BothHaveOneSurveyOpen, LaterSavesAreRefusedIfTheOtherSavedMeanwhile)
{
  open_in_both(in_progress);
  save_quietly(*mine, in_progress);
  they_save(in_progress);
  mine->survey.abundances = {{10, 2}};

  const SeenDialog seen = i_fail_to_save(in_progress);
  EXPECT_EQ(not_saved, seen.title);
  EXPECT_EQ("FAILED to save survey to " + path + "!\nThe file was externally modified", seen.text);
  EXPECT_EQ(their_text, read_file(path));
  EXPECT_EQ(1U, names_in(in_progress).size());
  EXPECT_TRUE(mine->file_needs_saving());

  i_fail_to_save(in_progress); // fails again
  EXPECT_EQ(their_text, read_file(path));
}

TEST_F(BothHaveOneSurveyOpen, AFileThatOnlyHasANewTimeIsReplaced)
{
  open_in_both(in_progress);
  for (const int abundance : {2, 3, 1}) {
    save_quietly(*mine, in_progress);
    fs::last_write_time(path, fs::last_write_time(path) + std::chrono::seconds(1));
    mine->survey.abundances = {{10, abundance}};
    save_quietly(*mine, in_progress);
    EXPECT_EQ(mine->survey.xml_current.raw(), read_file(path));
  }
  EXPECT_EQ(1U, names_in(in_progress).size());
}

TEST_F(BothHaveOneSurveyOpen, AFileThatWasReplacedByTheSameBytesIsReplaced)
{
  open_in_both(in_progress);
  save_quietly(*mine, in_progress);
  in_another_program([&] {
    const std::string bytes = read_file(path);
    write_file(path + ".part", bytes);
    fs::last_write_time(path + ".part", fs::last_write_time(path) + std::chrono::seconds(1));
    fs::rename(path + ".part", path);
  });
  mine->survey.abundances = {{10, 2}};
  save_quietly(*mine, in_progress);
  EXPECT_EQ(mine->survey.xml_current.raw(), read_file(path));
}

TEST_F(BothHaveOneSurveyOpen, AClosingWindowStaysOpenIfItsSaveIsRefused)
{
  open_in_both(in_progress);
  save_quietly(*mine, in_progress);
  they_save(in_progress);
  mine->survey.abundances = {{10, 2}};
  bool may_go_on = true;
  const auto seen = answer_dialogs({Gtk::RESPONSE_ACCEPT, Gtk::RESPONSE_OK}, [&] {
    may_go_on = mine->check_file_save_okay("closing this survey");
  });
  EXPECT_FALSE(may_go_on);
  ASSERT_EQ(2U, seen.size());
  EXPECT_EQ("Survey Not Saved Yet!", seen[0].title);
  EXPECT_EQ(not_saved, seen[1].title);
  EXPECT_EQ(their_text, read_file(path));
}

TEST_F(BothHaveOneSurveyOpen, ARefusedSurveyIsSavedUnderTheNameOfAnotherMember)
{
  open_in_both(in_progress);
  save_quietly(*mine, in_progress);
  they_save(in_progress);
  mine->survey.abundances = {{10, 2}};
  i_fail_to_save(in_progress);
  window = mine;
  type_member("1235", "Smith");
  save_quietly(*mine, in_progress);
  EXPECT_EQ(their_text, read_file(path));
  EXPECT_EQ(mine->survey.xml_current.raw(),
            read_file(path_of(in_progress, "1235-PNW-20210630-0900-31020003")));
}

TEST_F(BothHaveOneSurveyOpen, BothDocumentsRemainIfTheyAreSavedInDifferentStates)
{
  open_in_both(in_progress);
  they_save(ready);
  EXPECT_EQ(Names(), names_in(in_progress));
  save_quietly(*mine, in_progress);
  EXPECT_EQ(Texts{my_text}, texts_in(in_progress));
  EXPECT_EQ(Texts{their_text}, texts_in(ready));
}

TEST_F(BothHaveOneSurveyOpen, TheSecondFileThatIsMarkedForUploadGetsANumber)
{
  open_in_both(in_progress);
  they_save(ready);
  save_quietly(*mine, ready);
  EXPECT_EQ(their_text, read_file(path_of(ready, natural_name)));
  EXPECT_EQ(my_text, read_file(path_of(ready, natural_name + "-1")));
}

TEST_F(BothHaveOneSurveyOpen, WhatTheOtherDeletedCanStillBeSaved)
{
  for (const bool was_saved : {false, true}) {
    SCOPED_TRACE(was_saved ? "saved since opening" : "as opened");
    fs::remove_all(my_app->survey_root);
    mine->survey.filename.clear();
    open_in_both(in_progress);
    if (was_saved)
      save_quietly(*mine, in_progress);
    answer_next_dialog(Gtk::RESPONSE_ACCEPT,
                       [&] { EXPECT_TRUE(theirs->maybe_delete_survey(path)); });
    ASSERT_FALSE(fs::exists(path));
    save_quietly(*mine, in_progress);
    EXPECT_EQ(my_text, read_file(path));
  }
}

TEST_F(BothHaveOneSurveyOpen, WhatTheOtherDeletedCannotBeOpenedOrDeletedAgain)
{
  open_in_both(in_progress);
  in_another_program([&] { EXPECT_TRUE(fs::remove(path)); });
  EXPECT_EQ("ERROR: Survey NOT loaded!", answer_next_dialog(Gtk::RESPONSE_OK, [&] {
                                           EXPECT_EQ(RET_FAILURE, create_window()->do_open(path));
                                         }).title);
  EXPECT_EQ("Not a survey file?", answer_next_dialog(Gtk::RESPONSE_OK, [&] {
                                    EXPECT_FALSE(mine->maybe_delete_survey(path));
                                  }).title);
}

TEST_F(BothHaveOneSurveyOpen, TheNextSaveKeepsWhatTheOtherUploaded)
{
  open_in_both(ready);
  const std::string sent = read_file(path);
  in_another_program([&] {
    std::string moved = path;
    EXPECT_EQ(RET_SUCCESS, my_app->move_survey_to(uploaded, moved));
  });
  const SeenDialog seen = answer_next_dialog(Gtk::RESPONSE_OK, [&] {
    EXPECT_EQ(RET_SUCCESS, mine->do_save(ready, SurveyWindow::SAVE_NOTIFY));
  });
  EXPECT_EQ("Survey Saved", seen.title);
  EXPECT_EQ(0U, seen.text.find("Survey saved to " + path + "\n")) << seen.text;
  EXPECT_EQ(Texts{my_text}, texts_in(ready));
  EXPECT_EQ(Texts{sent}, texts_in(uploaded));
}

TEST_F(BothHaveOneSurveyOpen, WhatTheOtherMovedAwayCannotBeMovedAgain)
{
  open_in_both(ready);
  const std::string sent = read_file(path);
  in_another_program([&] {
    std::string moved = path;
    EXPECT_EQ(RET_SUCCESS, my_app->move_survey_to(uploaded, moved));
  });
  std::string moved_path = path;
  const SeenDialog seen = answer_next_dialog(Gtk::RESPONSE_OK, [&] {
    EXPECT_EQ(RET_FAILURE, my_app->move_survey_to(in_progress, moved_path));
  });
  EXPECT_EQ(0U, seen.text.find("Failed to move survey file from " + path + " to ")) << seen.text;
  EXPECT_EQ(path, moved_path);
  EXPECT_EQ(Texts{sent}, texts_in(uploaded));
  EXPECT_EQ(Names(), names_in(in_progress));
}

TEST_F(BothSaveANewSurvey, ManyTimesTogetherAndEachGetsItsOwnFile)
{
  constexpr int rounds = 20;
  const auto save_them = [](SurveyWindow& saved) {
    for (int i = 0; i < rounds; ++i) {
      saved.survey.filename.clear();
      saved.survey.file_etag.clear();
      save_quietly(saved, in_progress);
    }
  };
  in_another_program([&] { save_them(*theirs); }, [&] { save_them(*mine); });
  EXPECT_EQ(Texts(), files_that_are_neither());
  const Texts texts = texts_in(in_progress);
  EXPECT_EQ(rounds, std::count(texts.begin(), texts.end(), my_text));
  EXPECT_EQ(rounds, std::count(texts.begin(), texts.end(), their_text));
  RecordProperty("tried", 2 * rounds);
}

TEST_F(BothSaveANewSurvey, AndAFailedSaveDoesNotOwnTheFileOfTheOther)
{
  they_save_where_i_failed(in_progress);
  save_quietly(*mine, in_progress);
  EXPECT_EQ(their_text, read_file(path_of(in_progress, natural_name)));
  EXPECT_EQ(path_of(in_progress, natural_name + "-1"), mine->survey.filename);
  EXPECT_EQ(my_text, read_file(mine->survey.filename));
}

TEST_F(BothSaveANewSurvey, AndAFailedSaveToAnotherStateDoesNotOwnTheFileThere)
{
  they_save_where_i_failed(ready);
  save_quietly(*mine, in_progress);
  EXPECT_EQ(Texts{their_text}, texts_in(ready)) << "not removed as the file of the old state";
  EXPECT_EQ(Texts{my_text}, texts_in(in_progress));
}

TEST_F(BothSaveANewSurvey, AndASaveThatSucceedsAfterAFailedOneOwnsItsFile)
{
  they_save_where_i_failed(in_progress);
  save_quietly(*mine, in_progress);
  mine->survey.abundances = {{10, 2}};
  save_quietly(*mine, in_progress);
  EXPECT_EQ(2U, names_in(in_progress).size());
  EXPECT_EQ(path_of(in_progress, natural_name + "-1"), mine->survey.filename);
}

TEST_F(BothHaveOneSurveyOpen, AndSaveItManyTimesTogetherAndItStaysComplete)
{
  open_in_both(in_progress);
  constexpr int rounds = 50;
  const auto save_it = [](SurveyWindow& saved) {
    for (int i = 0; i < rounds; ++i) {
      saved.survey.file_etag.clear(); // as after opening the file
      save_quietly(saved, in_progress);
    }
  };
  in_another_program([&] { save_it(*theirs); }, [&] { save_it(*mine); });
  EXPECT_EQ(Texts(), files_that_are_neither());
  EXPECT_EQ(1U, names_in(in_progress).size());
  RecordProperty("tried", 2 * rounds);
}
