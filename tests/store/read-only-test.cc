// Tests directories and files that are not writable or not readable.
#include "store/saving-test.h"
#include "store/unprivileged.h"
#include "support/dialogs.h"
#include "support/output.h"
#include "ui/start-panel.h"
#include "ui/survey-panel2.h"
#include "ui/survey-window.h"

#include <filesystem>
#include <map>

namespace fs = std::filesystem;

namespace {

const auto in_progress = MyApp::WD_IN_PROGRESS;
const auto ready = MyApp::WD_READY_TO_UPLOAD;
const auto uploaded = MyApp::WD_UPLOADED;

const auto read_only = fs::perms(0555);
const auto closed = fs::perms::none;

using Files = std::map<std::string, std::string>;

// A window with a survey. The store belongs to a user who is subject to permissions.
class ReadOnlyStore : public SavingTest
{
public:
  void SetUp() override
  {
    SavingTest::SetUp();
    enter_survey();
    for (const auto which : {MyApp::WD_ROOT, in_progress, ready, uploaded})
      hand_over(my_app->get_survey_dir(which), application_dir.root);
  }

  // Runs `action` while `obstacle` has only these permissions.
  void with(const std::string& obstacle, fs::perms rights,
            const std::function<void()>& action) const
  {
    const OnlyRights only(obstacle, rights);
    const Unprivileged bound;
    action();
  }

  void save_as_usual(MyApp::WhichDir which) const
  {
    const Unprivileged bound;
    save_quietly(*window, which);
  }

  // Saves a survey and enters a change.
  void save_and_change()
  {
    save_as_usual(in_progress);
    path = window->survey.filename;
    old_text = read_file(path);
    window->survey_panel2->bottom_time->set_text("45");
  }

  // Saves while `obstacle` has only these permissions. Expects a dialog with the reason, an
  // unchanged store, and a successful save without the obstacle.
  void expect_refused_save(MyApp::WhichDir which, const std::string& obstacle, fs::perms rights)
  {
    const Files before = files();
    RetCode result = RET_SUCCESS;
    const SeenDialog seen = answer_next_dialog(Gtk::RESPONSE_OK, [&] {
      with(obstacle, rights, [&] { result = window->do_save(which, SurveyWindow::SAVE_QUIET); });
    });
    EXPECT_EQ(RET_FAILURE, result);
    EXPECT_EQ("ERROR: Survey NOT Saved!!!", seen.title);
    EXPECT_EQ(0U, seen.text.raw().find("FAILED to save survey to " + path_of(which, natural_name) +
                                       "!\n"))
        << seen.text;
    EXPECT_NE(std::string::npos, seen.text.raw().find("Permission denied")) << seen.text;
    EXPECT_EQ(before, files());
    EXPECT_TRUE(window->file_needs_saving());

    save_as_usual(which);
    EXPECT_EQ(window->survey.xml_current.raw(), read_file(path_of(which, natural_name)));
    EXPECT_FALSE(window->file_needs_saving());
  }

  // Returns every file of the store by its path.
  Files files() const
  {
    Files found;
    for (const auto& entry : fs::recursive_directory_iterator(my_app->survey_root)) {
      if (!entry.is_directory())
        found[entry.path().string()] = read_file(entry.path().string());
    }
    return found;
  }

  std::string directory(MyApp::WhichDir which) const { return my_app->get_survey_dir(which); }

  std::string path; // the path of the saved survey
  std::string old_text;
};

} // namespace

TEST_F(ReadOnlyStore, RefusesAFirstSave)
{
  expect_refused_save(in_progress, directory(in_progress), read_only);
}

TEST_F(ReadOnlyStore, RefusesAFirstSaveIfItsDirectoryCannotBeCreated)
{
  fs::remove(directory(in_progress));
  RetCode result = RET_SUCCESS;
  const SeenDialog seen = answer_next_dialog(Gtk::RESPONSE_OK, [&] {
    with(my_app->survey_root, read_only,
         [&] { result = window->do_save(in_progress, SurveyWindow::SAVE_QUIET); });
  });
  EXPECT_EQ(RET_FAILURE, result);
  EXPECT_EQ("ERROR: Survey NOT Saved!!!", seen.title);
  EXPECT_EQ(Files(), files());
  EXPECT_TRUE(window->file_needs_saving());
  save_as_usual(in_progress);
  EXPECT_EQ(window->survey.xml_current.raw(), read_file(window->survey.filename));
}

TEST_F(ReadOnlyStore, WritesANewVersionOfAWritableFile)
{
  save_and_change();
  with(directory(in_progress), read_only, [&] { save_quietly(*window, in_progress); });
  EXPECT_EQ((Files{{path, window->survey.xml_current.raw()}}), files());
  EXPECT_NE(old_text, read_file(path));
  EXPECT_FALSE(window->file_needs_saving());
}

TEST_F(ReadOnlyStore, KeepsAFileThatIsNotWritable)
{
  for (const auto rights : {fs::perms(0444), closed}) {
    save_and_change();
    expect_refused_save(in_progress, path, rights);
    window->survey_panel2->bottom_time->set_text("");
  }
}

TEST_F(ReadOnlyStore, KeepsASurveyInItsStateIfTheNextOneIsNotWritable)
{
  save_and_change();
  expect_refused_save(ready, directory(ready), read_only);
  EXPECT_EQ(old_text, read_file(path)) << "the one in progress";
}

TEST_F(ReadOnlyStore, KeepsASurveyInBothStatesIfItCannotLeaveOne)
{
  save_and_change();
  with(directory(in_progress), read_only, [&] { save_quietly(*window, ready); });
  const std::string new_path = path_of(ready, natural_name);
  EXPECT_EQ((Files{{path, old_text}, {new_path, window->survey.xml_current.raw()}}), files());
  EXPECT_EQ(new_path, window->survey.filename);
  EXPECT_FALSE(window->file_needs_saving());
}

TEST_F(ReadOnlyStore, KeepsASurveyInPlaceIfItCannotMove)
{
  save_and_change();
  const std::string to = path_of(uploaded, natural_name);
  std::string moved = path;
  RetCode result = RET_SUCCESS;
  const SeenDialog seen = answer_next_dialog(Gtk::RESPONSE_OK, [&] {
    with(directory(uploaded), read_only, [&] { result = my_app->move_survey_to(uploaded, moved); });
  });
  EXPECT_EQ(RET_FAILURE, result);
  EXPECT_EQ(path, moved);
  EXPECT_EQ("Error occurred", seen.title);
  EXPECT_EQ(0U, seen.text.raw().find("Failed to move survey file from " + path + " to " + to +
                                     ": (via gioerr) "))
      << seen.text;
  EXPECT_NE(std::string::npos, seen.text.raw().find("Permission denied")) << seen.text;
  EXPECT_EQ((Files{{path, old_text}}), files());
  EXPECT_TRUE(window->file_needs_saving());
}

TEST_F(ReadOnlyStore, CopiesASurveyThatCannotLeave)
{
  save_and_change();
  std::string moved = path;
  const std::string said = output_of([&] {
    with(directory(in_progress), read_only, [&] {
      expect_no_dialog([&] { EXPECT_EQ(RET_SUCCESS, my_app->move_survey_to(uploaded, moved)); });
    });
  });
  EXPECT_EQ("unlink of " + path + " failed: 13 = Permission denied\n", said);
  EXPECT_EQ(path_of(uploaded, natural_name), moved);
  EXPECT_EQ((Files{{path, old_text}, {moved, old_text}}), files());
}

TEST_F(ReadOnlyStore, KeepsASurveyThatCanNeitherLeaveNorArrive)
{
  save_and_change();
  std::string moved = path;
  const SeenDialog seen = answer_next_dialog(Gtk::RESPONSE_OK, [&] {
    const OnlyRights there(directory(uploaded), read_only);
    with(directory(in_progress), read_only,
         [&] { EXPECT_EQ(RET_FAILURE, my_app->move_survey_to(uploaded, moved)); });
  });
  EXPECT_EQ("Error occurred", seen.title);
  EXPECT_EQ(path, moved);
  EXPECT_EQ((Files{{path, old_text}}), files());
}

TEST_F(ReadOnlyStore, KeepsASurveyThatCannotBeDeleted)
{
  save_and_change();
  const auto seen = answer_dialogs({Gtk::RESPONSE_ACCEPT, Gtk::RESPONSE_OK}, [&] {
    with(directory(in_progress), read_only,
         [&] { EXPECT_FALSE(window->maybe_delete_survey(path)); });
  });
  ASSERT_EQ(2U, seen.size());
  EXPECT_EQ("Deletion Failed", seen[1].title);
  EXPECT_EQ("Failed to delete survey file " + path + ": Permission denied (13)", seen[1].text);
  EXPECT_EQ((Files{{path, old_text}}), files());
  EXPECT_TRUE(window->file_needs_saving());
}

TEST_F(ReadOnlyStore, KeepsASurveyThatCannotBeRead)
{
  save_and_change();
  create_window();
  const auto seen = answer_dialogs({Gtk::RESPONSE_OK, Gtk::RESPONSE_OK}, [&] {
    with(path, closed, [&] {
      EXPECT_EQ(RET_FAILURE, window->do_open(path));
      EXPECT_FALSE(window->maybe_delete_survey(path));
    });
  });
  ASSERT_EQ(2U, seen.size());
  EXPECT_NE(std::string::npos, seen[0].text.raw().find("Permission denied")) << seen[0].text;
  EXPECT_EQ("Not a survey file?", seen[1].title);
  EXPECT_EQ((Files{{path, old_text}}), files());
}

TEST_F(ReadOnlyStore, MovesASurveyThatCannotBeRead)
{
  save_and_change();
  std::string moved = path;
  {
    const Unprivileged bound;
    fs::permissions(path, closed);
    expect_no_dialog([&] { EXPECT_EQ(RET_SUCCESS, my_app->move_survey_to(ready, moved)); });
    fs::permissions(moved, fs::perms(0644));
  }
  EXPECT_EQ((Files{{path_of(ready, natural_name), old_text}}), files());
}

TEST_F(ReadOnlyStore, ShowsUnreadableSurveysAndStates)
{
  save_and_change();
  const auto& columns = window->start_panel->columns;
  const auto first_row = [&] { return *window->start_panel->store->children().begin(); };
  const auto list = [&] { window->start_panel->build_survey_model(); };

  std::string said = output_of([&] { with(path, closed, list); });
  EXPECT_EQ(0U, said.find("File scan: " + path + ": ")) << said;
  EXPECT_EQ("(corrupted survey file)",
            (*first_row().children()[0].children().begin())[columns.description]);

  said = output_of([&] { with(directory(in_progress), closed, list); });
  EXPECT_EQ(0U, said.find("File scan: ")) << said;
  EXPECT_EQ("In Progress (cannot be read)", first_row()[columns.description]);
}
