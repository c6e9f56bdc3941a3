#include "data/data-file-info.h"
#include "data/region-fish-info.h"
#include "server/update-test.h"
#include "store/survey-file.h"
#include "support/main-loop.h"
#include "ui/member-panel.h"
#include "ui/survey-panel1.h"
#include "ui/unlisted-panel.h"

#include <gtkmm/application.h>
#include <gtkmm/filechooserdialog.h>

#include <filesystem>
#include <sstream>

namespace fs = std::filesystem;

namespace {

const auto new_survey = SurveyWindow::RESPONSE_NEW_SURVEY;
const auto quit = SurveyWindow::RESPONSE_QUIT;
const auto open_survey = SurveyWindow::RESPONSE_OPEN_SURVEY;

constexpr int new_species = 13; // only in the new data

// Tests the action after a check for updates, usually a check that installs new data.
class WindowSwap : public UpdateTest
{
public:
  void SetUp() override
  {
    UpdateTest::SetUp();
    old = window;
    serve();
    offer_new_data();
  }

  std::string enter_and_save()
  {
    enter_survey();
    save_quietly(*window, in_progress);
    return window->survey.filename;
  }

  // Like check(), and chooses the file `path` in the file dialog, or none if `path` is empty.
  RetCode check_and_choose(std::vector<int> answers, const std::string& path)
  {
    RetCode result = RET_INTERNAL_ERROR;
    seen.clear();
    const int expected = static_cast<int>(answers.size()) + 1;
    const auto handle = [&](Gtk::Dialog& dialog) {
      seen.push_back(describe(dialog));
      if (auto* chooser = dynamic_cast<Gtk::FileChooserDialog*>(&dialog))
        choose_file(*chooser, path);
      else
        dialog.response(take_first(answers));
    };
    meet_dialogs(expected, handle, [&] { result = old->check_for_updates(nullptr, open_survey); });
    return result;
  }

  // Returns the only visible window, which is also the only one in the application's list. Returns
  // null if there are others.
  SurveyWindow* only_window() const
  {
    const auto visible = visible_windows();
    const auto listed = my_app->app->get_windows();
    if (visible.size() != 1 || listed.size() != 1 || listed.front() != visible.front())
      return nullptr;
    return visible.front();
  }
  // Returns whether the old window is still the only one.
  bool is_still_there() const { return only_window() == old; }

  static bool has_new_species(const SurveyWindow& survey_window)
  {
    return survey_window.survey.region_fish &&
           survey_window.survey.region_fish->find_species(new_species);
  }

  Glib::ustring question() const { return seen.back().text; }

  SurveyWindow* old = nullptr;
  const std::string restart_question =
      "Survey has been changed without being saved!\nSave it before restarting the program?\n"
      "Click Save to save and proceed,\nNo to abandon your survey,\n"
      "or Cancel to do nothing instead of restarting the program.";

private:
  static void choose_file(Gtk::FileChooserDialog& chooser, const std::string& path)
  {
    if (path.empty()) {
      chooser.response(cancel);
      return;
    }
    chooser.set_filename(path);
    while (chooser.get_filename() != path)
      settle();
    chooser.response(ok);
  }

  static int take_first(std::vector<int>& answers)
  {
    if (answers.empty())
      return Gtk::RESPONSE_DELETE_EVENT; // the number of dialogs is checked later
    const int first = answers.front();
    answers.erase(answers.begin());
    return first;
  }
};

// Tests a window whose survey cannot be opened with the new data.
class FailingSwap : public WindowSwap
{
public:
  // Removes the survey's location from the new data.
  void withdraw_northwest() const
  {
    const std::string regions = server->data + "region-info.csv";
    std::istringstream rows(read_file(regions));
    std::string others;
    for (std::string row; std::getline(rows, row);)
      others += row.rfind("PAC,PNW,", 0) == 0 ? "" : row + "\n";
    write_file(regions, others);
  }

  // Expects that the old window is the only visible one and has the complete survey.
  void expect_kept(const std::string& path) const
  {
    EXPECT_TRUE(is_still_there());
    EXPECT_EQ(path, old->survey.filename);
    EXPECT_EQ("1234", old->member_panel->get_member_id());
    EXPECT_EQ(2U, old->survey.abundances.size());
    EXPECT_FALSE(old->file_needs_saving());
  }
};

} // namespace

// --- the swap ---

TEST_F(WindowSwap, OpensTheSavedSurveyAgainWithTheNewData)
{
  const std::string path = enter_and_save();
  const std::string document = read_file(path);
  EXPECT_EQ(RET_DATA_INSTALLED, check({yes, ok}));
  EXPECT_EQ(installed, messages().back());

  SurveyWindow* const shown = only_window();
  ASSERT_TRUE(shown);
  EXPECT_NE(old, shown);
  EXPECT_EQ(path, shown->survey.filename);
  EXPECT_EQ(document, read_file(path));
  EXPECT_EQ("1234", shown->member_panel->get_member_id());
  EXPECT_EQ(2, shown->survey.abundances[10]);
  EXPECT_EQ(1, shown->survey.abundances[11]);
  EXPECT_FALSE(shown->file_needs_saving());
  EXPECT_TRUE(has_new_species(*shown));
  EXPECT_FALSE(has_new_species(*old)) << "the old tables stay alive";
  EXPECT_EQ("20220202000000", my_app->data_file_info->timestamp);

  shown->hide(); // like a user who closes it
  EXPECT_TRUE(my_app->app->get_windows().empty()) << "the program would not end";
}

TEST_F(WindowSwap, LetsTheUserMarkASpeciesThatOnlyTheNewDataHave)
{
  const std::string path = enter_and_save();
  check({yes, ok});
  window = only_window();
  ASSERT_TRUE(window);
  Glib::ustring label;
  window->abundance_target = new_species;
  window->on_abundance_menu_item(2);
  window->unlisted_model->foreach_iter([&](const Gtk::TreeIter& row) {
    if (row->get_value(window->species_columns.col_id) == new_species)
      label = row->get_value(window->species_columns.col_abundance_label);
    return false;
  });
  EXPECT_EQ("Few (2-10)", label);
  save_quietly(*window, in_progress);
  EXPECT_NE(std::string::npos,
            read_file(path).find("<species id=\"0013\" abun=\"2\" resp=\"102\"/>"))
      << read_file(path);
}

TEST_F(WindowSwap, ShowsAnEmptyWindowIfNothingWasSavedOrEntered)
{
  EXPECT_EQ(RET_DATA_INSTALLED, check({yes, ok}));
  ASSERT_TRUE(only_window());
  EXPECT_NE(old, only_window());
  EXPECT_TRUE(only_window()->survey.filename.empty());
}

TEST_F(WindowSwap, ShowsTheNewWindowWhereTheOldOneWas)
{
  const auto place_of = [](const SurveyWindow& placed) {
    std::pair<int, int> place;
    placed.get_position(place.first, place.second);
    return place;
  };
  const std::pair moved(123, 45);
  old->move(moved.first, moved.second);
  wait_until("the old window is where it was put", [&] { return place_of(*old) == moved; });
  EXPECT_EQ(RET_DATA_INSTALLED, check({yes, ok}));
  auto* const shown = only_window();
  ASSERT_TRUE(shown);
  ASSERT_NE(old, shown);
  wait_until("the new window is there, too", [&] { return place_of(*shown) == moved; });
}

TEST_F(WindowSwap, IsTheDefaultForAnUnknownChoice)
{
  EXPECT_EQ(RET_DATA_INSTALLED, check({yes, ok}, static_cast<SurveyWindow::ResponseCode>(5)));
  EXPECT_NE(old, only_window());
}

TEST_F(WindowSwap, DoesNotHappenWithoutNewData)
{
  const struct {
    const char* why;
    std::vector<std::string> options;
    std::vector<int> answers;
    RetCode result;
  } cases[] = {
      {"declined", {}, {cancel}, RET_DECLINED},
      {"no contact", {"--app-query", "status=500"}, {ok}, RET_FAILURE},
      {"download fails", {"--archive", "status=404"}, {yes, ok}, RET_FAILURE},
      {"install fails", {"--archive", "damaged=not-tar"}, {yes, ok}, RET_FAILURE},
  };
  for (const auto& c : cases) {
    serve(c.options);
    offer_new_data();
    EXPECT_EQ(c.result, check(c.answers)) << c.why;
    EXPECT_TRUE(is_still_there()) << c.why;
    EXPECT_EQ("20210101000000", my_app->data_file_info->timestamp) << c.why;
  }
}

// --- a saved survey that cannot be opened again ---

TEST_F(FailingSwap, KeepsTheWindowWhoseLocationTheNewDataLack)
{
  const std::string path = enter_and_save();
  withdraw_northwest();
  EXPECT_EQ(RET_DATA_INSTALLED, check({yes, ok, ok}));
  EXPECT_EQ("ERROR: Survey NOT loaded!", seen.back().title);
  EXPECT_EQ(path + ": MAVO Survey is from a location that your data files do not know (PNW); "
                   "please check for updates of the data files",
            seen.back().text.raw());
  expect_kept(path);
}

TEST_F(FailingSwap, KeepsAWindowThatCanStillBeSaved)
{
  const std::string path = enter_and_save();
  const std::string saved = read_file(path);
  withdraw_northwest();
  check({yes, ok, ok});
  old->member_panel->last_name->set_text("Fisher");
  save_quietly(*old, in_progress);
  EXPECT_EQ(path, old->survey.filename);
  EXPECT_NE(saved, read_file(path));
  EXPECT_NE(std::string::npos, read_file(path).find("<last_name>Fisher</last_name>"));
}

TEST_F(FailingSwap, KeepsTheWindowWhoseSavedFileIsMissing)
{
  const std::string path = enter_and_save();
  fs::remove(path);
  EXPECT_EQ(RET_DATA_INSTALLED, check({yes, ok, ok}));
  EXPECT_EQ("ERROR: Survey NOT loaded!", seen.back().title);
  expect_kept(path);
}

TEST_F(FailingSwap, KeepsTheWindowWhoseSavedFileIsDamaged)
{
  const std::string path = enter_and_save();
  write_file(path, "no survey");
  EXPECT_EQ(RET_DATA_INSTALLED, check({yes, ok, ok}));
  EXPECT_EQ("ERROR: Survey NOT loaded!", seen.back().title);
  expect_kept(path);
}

TEST_F(FailingSwap, KeepsTheWindowIfNoOtherSurveyWasChosenEither)
{
  const std::string path = enter_and_save();
  withdraw_northwest();
  EXPECT_EQ(RET_DECLINED, check({yes, ok, cancel, ok}, open_survey));
  EXPECT_EQ("ERROR: Survey NOT loaded!", seen.back().title);
  expect_kept(path);
}

// --- the action that the user chose ---

TEST_F(WindowSwap, IsReplacedByANewSurvey)
{
  enter_and_save();
  EXPECT_EQ(RET_DATA_INSTALLED, check({yes, ok}, new_survey));
  ASSERT_TRUE(only_window());
  EXPECT_NE(old, only_window());
  EXPECT_TRUE(only_window()->survey.filename.empty());
  EXPECT_EQ("1234", only_window()->member_panel->get_member_id()) << "carried over";
  EXPECT_TRUE(has_new_species(*only_window()));
}

TEST_F(WindowSwap, KeepsTheWindowIfTheUserCancelsANewSurvey)
{
  enter_survey();
  EXPECT_EQ(RET_DATA_INSTALLED, check({yes, ok, cancel}, new_survey));
  EXPECT_NE(std::string::npos, question().find("before closing it to start a new survey?"));
  EXPECT_TRUE(is_still_there());
}

TEST_F(WindowSwap, IsReplacedByTheEndOfTheProgram)
{
  EXPECT_EQ(RET_DATA_INSTALLED, check({yes, ok}, quit));
  EXPECT_TRUE(visible_windows().empty());
  EXPECT_TRUE(my_app->app->get_windows().empty());
}

TEST_F(WindowSwap, KeepsAWindowThatTheUserDoesNotCloseWithItsOldTables)
{
  // The new data have other response ids for the abundances.
  const std::string choices = "abundance-choices.csv";
  write_file(server->data + choices, "responseid,survey_subtype_id,label,abun\n"
                                     "801,1,One,1\n802,1,Two,2\n");
  enter_survey();
  EXPECT_EQ(RET_DATA_INSTALLED, check({yes, ok, cancel}, quit));
  EXPECT_NE(std::string::npos, question().find("before exiting this program?"));
  EXPECT_TRUE(is_still_there());
  EXPECT_FALSE(has_new_species(*old));

  choose_survey_type("Northwest: fish and invertebrates"); // has no choices in the new data
  save_quietly(*window, in_progress);
  const std::string document = read_file(window->survey.filename);
  EXPECT_NE(std::string::npos, document.find("abun=\"2\" resp=\"302\"")) << document;
}

TEST_F(WindowSwap, HappensIfNoSurveyWasOpened)
{
  const std::string path = enter_and_save();
  EXPECT_EQ(RET_DECLINED, check_and_choose({yes, ok}, ""));
  ASSERT_TRUE(only_window());
  EXPECT_NE(old, only_window());
  EXPECT_EQ(path, only_window()->survey.filename);
}

TEST_F(WindowSwap, HappensIfTheChosenSurveyCannotBeOpened)
{
  const std::string path = my_app->get_survey_dir(in_progress) + "/broken.MAVO-Survey";
  write_file(path, "no survey");
  EXPECT_EQ(RET_FAILURE, check_and_choose({yes, ok, ok}, path));
  EXPECT_EQ("ERROR: Survey NOT loaded!", seen.back().title);
  ASSERT_TRUE(only_window());
  EXPECT_NE(old, only_window());
  EXPECT_TRUE(only_window()->survey.filename.empty());
}

TEST_F(WindowSwap, IsReplacedByAnOpenedSurvey)
{
  enter_and_save();
  const std::string path = my_app->get_survey_dir(in_progress) + "/another.MAVO-Survey";
  write_file(path, SurveyFile().text());
  EXPECT_EQ(RET_SUCCESS, check_and_choose({yes, ok}, path));
  ASSERT_TRUE(only_window());
  EXPECT_EQ(path, only_window()->survey.filename);
  EXPECT_TRUE(has_new_species(*only_window()));
}

TEST_F(WindowSwap, ReturnsTheResultOfOpeningASurvey)
{
  serve({"--app-query", "status=500"});
  EXPECT_EQ(RET_DECLINED, check_and_choose({ok}, "")) << "the check itself failed";
  EXPECT_TRUE(is_still_there());
  const std::string path = my_app->get_survey_dir(in_progress) + "/another.MAVO-Survey";
  write_file(path, SurveyFile().text());
  EXPECT_EQ(RET_SUCCESS, check_and_choose({ok}, path));
  ASSERT_TRUE(only_window());
  EXPECT_EQ(path, only_window()->survey.filename);
}

TEST_F(WindowSwap, StartsANewSurveyOrEndsAlsoAfterAFailure)
{
  serve({"--app-query", "status=500"});
  EXPECT_EQ(RET_FAILURE, check({ok}, new_survey));
  window = only_window();
  ASSERT_TRUE(window);
  EXPECT_NE(old, window);
  EXPECT_EQ(RET_FAILURE, check({ok}, quit));
  EXPECT_TRUE(visible_windows().empty());
}

// --- unsaved changes ---

TEST_F(WindowSwap, KeepsAWindowWithUnsavedChangesIfTheUserCancels)
{
  enter_survey();
  EXPECT_EQ(RET_DATA_INSTALLED, check({yes, ok, cancel}));
  EXPECT_EQ(restart_question, question().raw());
  EXPECT_TRUE(is_still_there());
  EXPECT_EQ("1234", window->member_panel->get_member_id());
}

TEST_F(WindowSwap, SavesUnsavedChangesAndOpensThemAgainIfTheUserWants)
{
  enter_survey();
  EXPECT_EQ(RET_DATA_INSTALLED, check({yes, ok, yes, ok}));
  ASSERT_TRUE(only_window());
  EXPECT_NE(old, only_window());
  EXPECT_EQ(path_of(in_progress, natural_name), only_window()->survey.filename);
}

TEST_F(WindowSwap, DiscardsUnsavedChangesIfTheUserAgrees)
{
  enter_survey();
  EXPECT_EQ(RET_DATA_INSTALLED, check({yes, ok, no}));
  ASSERT_TRUE(only_window());
  EXPECT_NE(old, only_window());
  EXPECT_TRUE(names_in(in_progress).empty());
}

TEST_F(WindowSwap, DoesNotAskAgainAboutChangesThatWereDiscardedBeforeTheCheck)
{
  enter_survey();
  seen = answer_dialogs({no, yes, ok}, [this] { window->manual_check_for_updates(); });
  EXPECT_EQ(installed, messages().back());
  EXPECT_NE(old, only_window());
}

TEST_F(WindowSwap, DoesNotAskAboutASavedSurveyWhoseResponseIdsChange)
{
  write_file(server->data + "abundance-choices.csv", "responseid,survey_subtype_id,label,abun\n"
                                                     "801,1,One,1\n802,1,Two,2\n");
  enter_and_save();
  EXPECT_EQ(RET_DATA_INSTALLED, check({yes, ok}));
  EXPECT_NE(old, only_window());
}

TEST_F(WindowSwap, AsksAgainAfterAnUploadAboutDiscardedChanges)
{
  const std::string path = my_app->get_survey_dir(ready) + "/another.MAVO-Survey";
  write_file(path, SurveyFile().text());
  enter_survey();
  answer_next_dialog(no, [this] { window->check_file_save_okay("closing this survey"); });
  seen = answer_dialogs({ok, yes, ok, cancel}, [&] { window->do_upload_single(path); });
  EXPECT_EQ("Upload Successful", seen.front().title);
  EXPECT_EQ(restart_question, question().raw());
  EXPECT_TRUE(is_still_there());
}
