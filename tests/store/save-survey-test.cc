#include "core/markup.h"
#include "store/full-disk.h"
#include "store/other-file-system.h"
#include "store/saving-test.h"
#include "store/survey-file.h"
#include "support/dialogs.h"
#include "support/main-loop.h"
#include "support/output.h"
#include "ui/confirm-panel.h"
#include "ui/listed-panel.h"
#include "ui/member-panel.h"
#include "ui/start-panel.h"
#include "ui/survey-panel1.h"
#include "ui/survey-panel2.h"
#include "ui/survey-window.h"

#include <glibmm/main.h>
#include <glibmm/miscutils.h>
#include <gtkmm/messagedialog.h>

#include <chrono>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

using Names = std::vector<std::string>;

const auto in_progress = MyApp::WD_IN_PROGRESS;
const auto ready = MyApp::WD_READY_TO_UPLOAD;
const int ok = Gtk::RESPONSE_OK;

class SaveSurvey : public SavingTest
{
public:
  // Saves, answers the dialog of the failure and returns its text.
  Glib::ustring failure_of_save(MyApp::WhichDir which)
  {
    RetCode result = RET_SUCCESS;
    const SeenDialog seen =
        answer_next_dialog(ok, [&] { result = window->do_save(which, SurveyWindow::SAVE_QUIET); });
    EXPECT_EQ(RET_FAILURE, result);
    EXPECT_EQ("ERROR: Survey NOT Saved!!!", seen.title);
    EXPECT_EQ(Gtk::MESSAGE_WARNING, seen.message_type);
    return seen.text;
  }

  Glib::ustring failed_to_save_to(const std::string& path) const
  {
    return "FAILED to save survey to " + path + "!\n";
  }

  // Creates a file at the path of the directory of surveys in progress.
  void put_a_file_in_the_way() const
  {
    fs::remove_all(my_app->survey_root + "/In Progress");
    write_file(my_app->survey_root + "/In Progress", "in the way");
  }

  std::string file(const std::string& base_name) const { return base_name + ".MAVO-Survey"; }
};

// Waits until a file that is written now has a later time than `path`. The times of files have a
// resolution of some milliseconds, and entity tags contain them.
void wait_for_a_later_time_than_that_of(const std::string& path)
{
  const std::string clock = path + ".clock";
  do
    write_file(clock, "x");
  while (fs::last_write_time(clock) <= fs::last_write_time(path));
  fs::remove(clock);
}

bool begins_with(const Glib::ustring& text, const Glib::ustring& start)
{
  return text.raw().compare(0, start.raw().size(), start.raw()) == 0;
}

} // namespace

TEST_F(SaveSurvey, WritesTheDocumentUnderItsNaturalName)
{
  enter_survey();
  const std::string path = path_of(in_progress, natural_name);
  EXPECT_EQ("Selected filename " + path + "\n",
            output_of([&] { save_quietly(*window, in_progress); }));
  EXPECT_EQ(path, window->survey.filename);
  EXPECT_EQ(window->survey.xml_current.raw(), read_file(path));
  EXPECT_EQ(window->survey.xml_current.raw(), window->survey.xml_last_saved.raw());
  EXPECT_FALSE(window->survey.file_etag.empty());
  EXPECT_FALSE(window->file_needs_saving());
}

TEST_F(SaveSurvey, WritesEveryFieldOfThePanels)
{
  enter_survey();
  type_member("  1234 ", " Smith & Sons ");
  const SurveyPanel2& conditions = *window->survey_panel2;
  conditions.surface_temp->set_text(" 12.5 ");
  conditions.bottom_temp->set_text("9");
  choose(*conditions.temp_units, "Celsius");
  conditions.bottom_time->set_text(" 130");
  window->confirm_panel->confirm_bottom_time->set_active(true);
  choose(*conditions.visibility, "Good");
  choose(*conditions.avg_depth, "Shallow");
  choose(*conditions.max_depth, "Deep");
  choose(*conditions.current, "None");
  choose(*conditions.habitat, "Wall");
  choose(*window->listed_panel->species_view, "With invertebrates");
  window->survey.abundances = {{10, 2}, {11, 0}, {21, 1}};
  save_quietly(*window, in_progress);

  const std::string text = read_file(window->survey.filename);
  EXPECT_EQ("  <survey>\n"
            "    <member_id>1234</member_id>\n"
            "    <last_name>Smith &amp; Sons</last_name>\n"
            "    <subregion>PNW</subregion>\n"
            "    <survey_subtype>1</survey_subtype>\n"
            "    <year>2021</year>\n"
            "    <month>06</month>\n"
            "    <mday>30</mday>\n"
            "    <dive_start>9</dive_start>\n"
            "    <zonecode>31020003</zonecode>\n"
            "    <surface_temp>12.5</surface_temp>\n"
            "    <bottom_temp>9</bottom_temp>\n"
            "    <temp_units>C</temp_units>\n"
            "    <bottom_time confirmed=\"1\">130</bottom_time>\n"
            "    <visibility>2</visibility>\n"
            "    <avg_depth>2</avg_depth>\n"
            "    <max_depth>3</max_depth>\n"
            "    <current>1</current>\n"
            "    <habitat>3</habitat>\n"
            "    <species_view>2</species_view>\n"
            "    <ids>\n"
            "      <species id=\"0010\" abun=\"2\" resp=\"102\"/>\n"
            "      <species id=\"0021\" abun=\"1\" resp=\"990\"/>\n"
            "    </ids>\n"
            "  </survey>\n"
            "</MAVO-Survey>\n",
            text.substr(text.find("  <survey>")));
}

TEST_F(SaveSurvey, RefusesASurveyWithoutALocation)
{
  type_member("1234", "Smith");
  choose_date("2021", "June", "30");
  EXPECT_EQ("Sorry, you must select a location before you can save a survey!",
            failure_of_save(in_progress));
  EXPECT_EQ(Names(), names_in(in_progress));
  EXPECT_EQ("", window->survey.filename);
}

TEST_F(SaveSurvey, RefusesAnUploadedSurvey)
{
  enter_survey();
  window->survey.is_uploaded = true;
  EXPECT_EQ("This survey was already uploaded and cannot be changed offline.",
            failure_of_save(ready));
  EXPECT_EQ(Names(), names_in(ready));
}

TEST_F(SaveSurvey, ReportsAMissingLocationFirst)
{
  window->survey.is_uploaded = true;
  EXPECT_EQ("Sorry, you must select a location before you can save a survey!",
            failure_of_save(in_progress));
}

TEST_F(SaveSurvey, WritesTheSameFileEachTime)
{
  enter_survey();
  save_quietly(*window, in_progress);
  window->survey_panel2->bottom_time->set_text("45");
  save_quietly(*window, in_progress);
  save_quietly(*window, in_progress);
  EXPECT_EQ(Names{file(natural_name)}, names_in(in_progress));
  EXPECT_EQ(window->survey.xml_current.raw(), read_file(window->survey.filename));
}

TEST_F(SaveSurvey, NumbersANewSurveyWhoseNameExists)
{
  const std::string another = SurveyFile().text();
  write_file(path_of(in_progress, natural_name), another);
  enter_survey();
  save_quietly(*window, in_progress);
  EXPECT_EQ(path_of(in_progress, natural_name + "-1"), window->survey.filename);

  create_window();
  enter_survey();
  const std::string said = output_of([&] { save_quietly(*window, in_progress); });
  EXPECT_EQ(path_of(in_progress, natural_name + "-2"), window->survey.filename);
  EXPECT_TRUE(begins_with(
      said, "Tried filename " + path_of(in_progress, natural_name) + " but it exists\n" +
                "Tried filename " + path_of(in_progress, natural_name + "-1") + " but it exists\n" +
                "Selected filename " + path_of(in_progress, natural_name + "-2") + "\n"))
      << said;
  EXPECT_EQ(another, read_file(path_of(in_progress, natural_name)));
}

TEST_F(SaveSurvey, MovesBetweenStatesWithoutACopy)
{
  enter_survey();
  save_quietly(*window, in_progress);
  save_quietly(*window, ready);
  EXPECT_EQ(Names(), names_in(in_progress));
  EXPECT_EQ(Names{file(natural_name)}, names_in(ready));
  save_quietly(*window, in_progress);
  EXPECT_EQ(Names{file(natural_name)}, names_in(in_progress));
  EXPECT_EQ(Names(), names_in(ready));
}

TEST_F(SaveSurvey, KeepsTheOldFileIfItsNameExistsInTheNewState)
{
  write_file(path_of(ready, natural_name), "another");
  enter_survey();
  save_quietly(*window, in_progress);
  save_quietly(*window, ready);
  EXPECT_EQ(Names{file(natural_name)}, names_in(in_progress));
  EXPECT_EQ((Names{file(natural_name + "-1"), file(natural_name)}), names_in(ready));
  EXPECT_EQ("another", read_file(path_of(ready, natural_name)));
}

TEST_F(SaveSurvey, KeepsTheOldFileWhenTheDateIsCorrected)
{
  enter_survey();
  save_quietly(*window, in_progress);
  choose(*window->survey_panel1->mday, "29");
  save_quietly(*window, in_progress);
  EXPECT_EQ((Names{file("1234-PNW-20210629-0900-31020003"), file(natural_name)}),
            names_in(in_progress));
  EXPECT_NE(std::string::npos, read_file(path_of(in_progress, natural_name)).find("<mday>30<"));
}

TEST_F(SaveSurvey, NamesASurveyByWhatIsKnown)
{
  choose_subregion("Northwest");
  save_quietly(*window, in_progress);
  choose(*window->survey_panel1->dive_start, "Midnight");
  save_quietly(*window, in_progress);
  EXPECT_EQ(Names{file("PNW-00000000-0000")}, names_in(in_progress));
}

TEST_F(SaveSurvey, StartsANewFileWhenTheSubregionChanges)
{
  enter_survey();
  window->survey.abundances.clear();
  save_quietly(*window, in_progress);
  choose_subregion("California");
  EXPECT_EQ("", window->survey.filename);
  save_quietly(*window, in_progress);
  EXPECT_EQ((Names{file("1234-CAL-20210630-0900"), file(natural_name)}), names_in(in_progress));
}

TEST_F(SaveSurvey, CreatesTheDirectoryAgainIfTheUserRemovedIt)
{
  enter_survey();
  save_quietly(*window, in_progress);
  fs::remove_all(my_app->survey_root);
  save_quietly(*window, in_progress);
  EXPECT_EQ(Names{file(natural_name)}, names_in(in_progress));
}

TEST_F(SaveSurvey, ReplacesAFileWithoutAKnownEntityTag)
{
  enter_survey();
  write_file(path_of(in_progress, natural_name), "as opened");
  window->survey.filename = path_of(in_progress, natural_name); // as after opening it
  save_quietly(*window, in_progress);
  EXPECT_EQ(window->survey.xml_current.raw(), read_file(window->survey.filename));
}

TEST_F(SaveSurvey, ShowsWhereItSavedAndTheNextSteps)
{
  type_member("R&D <1>", "Smith");
  choose_subregion("Northwest");
  const SeenDialog seen =
      answer_next_dialog(ok, [&] { window->do_save(in_progress, SurveyWindow::SAVE_ASK_NEXT); });
  EXPECT_EQ("Survey Saved", seen.title);
  EXPECT_EQ("Survey saved to " + path_of(in_progress, "R&D <1>-PNW-00000000-0000") +
                "\n\nTo return to this survey later, select Open Survey under the File menu.",
            seen.text);
  EXPECT_EQ(Gtk::MESSAGE_INFO, seen.message_type);
  EXPECT_TRUE(seen.has_icon);
  ASSERT_EQ(4U, seen.buttons.size());
  EXPECT_EQ("Open Saved Survey", seen.buttons[1]);
  EXPECT_EQ("Start New Survey", seen.buttons[2]);
  EXPECT_EQ("Quit Program", seen.buttons[3]);
  EXPECT_TRUE(window->get_visible());
}

TEST_F(SaveSurvey, ShowsOnlyWhereItSavedIfItOnlyNotifies)
{
  enter_survey();
  const SeenDialog seen =
      answer_next_dialog(ok, [&] { window->do_save(in_progress, SurveyWindow::SAVE_NOTIFY); });
  EXPECT_EQ("Survey Saved", seen.title);
  EXPECT_EQ(1U, seen.buttons.size());
}

TEST_F(SaveSurvey, StaysOnTheSurveyAfterOkOrWhenTheDialogIsClosed)
{
  enter_survey();
  for (const int response : {ok, int(Gtk::RESPONSE_DELETE_EVENT)}) {
    answer_next_dialog(response, [&] {
      EXPECT_EQ(RET_SUCCESS, window->do_save(in_progress, SurveyWindow::SAVE_ASK_NEXT));
    });
    EXPECT_EQ(std::vector<SurveyWindow*>{window}, visible_windows());
  }
}

TEST_F(SaveSurvey, StartsANewSurveyIfAsked)
{
  enter_survey();
  answer_next_dialog(SurveyWindow::RESPONSE_NEW_SURVEY, [&] {
    EXPECT_EQ(RET_SUCCESS, window->do_save(in_progress, SurveyWindow::SAVE_ASK_NEXT));
  });
  settle();
  ASSERT_EQ(1U, visible_windows().size());
  SurveyWindow* const next = visible_windows().front();
  EXPECT_NE(window, next);
  EXPECT_EQ("1234", next->member_panel->get_member_id());
  EXPECT_FALSE(next->file_needs_saving()) << "the copied entries are not a change";
}

TEST_F(SaveSurvey, OffersTheSavedSurveysIfAsked)
{
  enter_survey();
  const auto seen = answer_dialogs({SurveyWindow::RESPONSE_OPEN_SURVEY, Gtk::RESPONSE_CANCEL}, [&] {
    EXPECT_EQ(RET_SUCCESS, window->do_save(in_progress, SurveyWindow::SAVE_ASK_NEXT));
  });
  ASSERT_EQ(2U, seen.size());
  EXPECT_EQ("Open saved survey", seen[1].title);
  EXPECT_EQ(std::vector<SurveyWindow*>{window}, visible_windows());
}

TEST_F(SaveSurvey, ClosesTheWindowIfAskedToQuit)
{
  enter_survey();
  answer_next_dialog(SurveyWindow::RESPONSE_QUIT, [&] {
    EXPECT_EQ(RET_SUCCESS, window->do_save(in_progress, SurveyWindow::SAVE_ASK_NEXT));
  });
  EXPECT_FALSE(window->get_visible());
}

TEST_F(SaveSurvey, AsksBeforeItQuitsIfSomethingChangedMeanwhile)
{
  enter_survey();
  int dialogs = 0;
  const auto seen = answer_dialogs({SurveyWindow::RESPONSE_QUIT, Gtk::RESPONSE_CANCEL}, [&] {
    // Changes the survey while the first dialog is open, through the nested main loop.
    Glib::signal_idle().connect_once([&] {
      ++dialogs;
      window->survey_panel2->bottom_time->set_text("77");
    });
    EXPECT_EQ(RET_SUCCESS, window->do_save(in_progress, SurveyWindow::SAVE_ASK_NEXT));
  });
  ASSERT_EQ(2U, seen.size());
  EXPECT_EQ(1, dialogs);
  EXPECT_EQ("Survey Not Saved Yet!", seen[1].title);
  EXPECT_TRUE(window->get_visible());
}

TEST_F(SaveSurvey, IsDoneByTheButtonsAndTheMenu)
{
  enter_survey();
  const struct {
    const char* why;
    std::function<void()> act;
    MyApp::WhichDir which;
  } cases[] = {
      {"save button", [&] { window->on_save_button(); }, in_progress},
      {"ready button", [&] { window->on_ready_button(); }, ready},
      {"menu: for later", [&] { window->on_action_FileSaveForLater("FileSaveForLater"); },
       in_progress},
      {"menu: for upload", [&] { window->on_action_FileSaveForUpload("FileSaveForUpload"); },
       ready},
  };
  for (const auto& c : cases) {
    const SeenDialog seen = answer_next_dialog(ok, c.act);
    EXPECT_EQ(4U, seen.buttons.size()) << c.why;
    EXPECT_EQ(path_of(c.which, natural_name), window->survey.filename) << c.why;
  }
}

TEST_F(SaveSurvey, KeepsTheSurveyUnsavedIfItsDirectoryIsAFile)
{
  put_a_file_in_the_way();
  enter_survey();
  const std::string path = my_app->survey_root + "/In Progress/" + file(natural_name);
  const Glib::ustring text = failure_of_save(in_progress);
  EXPECT_TRUE(begins_with(text, failed_to_save_to(path))) << text;
  EXPECT_LT(failed_to_save_to(path).size(), text.size()) << "the reason follows";
  EXPECT_EQ(path, window->survey.filename);
  EXPECT_TRUE(window->file_needs_saving());

  fs::remove(my_app->survey_root + "/In Progress");
  save_quietly(*window, in_progress);
  EXPECT_EQ(Names{file(natural_name)}, names_in(in_progress));
}

TEST_F(SaveSurvey, ShowsNamesLiterallyWhenItFails)
{
  put_a_file_in_the_way();
  enter_survey();
  type_member("R&D <b>1</b>", "Smith");
  const Glib::ustring text = failure_of_save(in_progress);
  EXPECT_TRUE(begins_with(text, "FAILED to save survey to " + my_app->survey_root +
                                    "/In Progress/R&D <b>1"))
      << text;
}

TEST_F(SaveSurvey, KeepsTheOldFileWhenTheDiskIsFull)
{
  enter_survey();
  save_quietly(*window, in_progress);
  const std::string path = window->survey.filename;
  const std::string saved = read_file(path);
  window->survey_panel2->bottom_time->set_text("45");
  Glib::ustring text;
  {
    const FullDisk full(400);
    text = failure_of_save(in_progress);
  }
  EXPECT_TRUE(begins_with(text, failed_to_save_to(path))) << text;
  EXPECT_EQ(saved, read_file(path));
  EXPECT_EQ(saved, window->survey.xml_last_saved.raw());
  EXPECT_EQ(Names{file(natural_name)}, names_in(in_progress));
  EXPECT_TRUE(window->file_needs_saving());

  save_quietly(*window, in_progress);
  EXPECT_NE(saved, read_file(path));
  EXPECT_FALSE(window->file_needs_saving());
}

TEST_F(SaveSurvey, KeepsTheFileOfTheOldStateWhenTheDiskIsFull)
{
  enter_survey();
  save_quietly(*window, in_progress);
  const std::string saved = read_file(window->survey.filename);
  {
    const FullDisk full(400);
    EXPECT_TRUE(
        begins_with(failure_of_save(ready), failed_to_save_to(path_of(ready, natural_name))));
  }
  EXPECT_EQ(saved, read_file(path_of(in_progress, natural_name)));
  EXPECT_EQ(path_of(ready, natural_name), window->survey.filename);

  save_quietly(*window, ready);
  EXPECT_EQ(saved, read_file(path_of(ready, natural_name)));
}

TEST_F(SaveSurvey, DoesNotOverwriteAFileThatSomeoneElseChanged)
{
  enter_survey();
  save_quietly(*window, in_progress);
  const std::string path = window->survey.filename;
  write_file(path, "someone else's");
  fs::last_write_time(path, fs::last_write_time(path) + std::chrono::seconds(10));
  window->survey_panel2->bottom_time->set_text("45");

  EXPECT_EQ(failed_to_save_to(path) + "The file was externally modified",
            failure_of_save(in_progress));
  EXPECT_EQ("someone else's", read_file(path));
  EXPECT_TRUE(window->file_needs_saving());
}

TEST_F(SaveSurvey, KeepsAFileThatHasThatNameOnlyAfterASlash)
{
  fs::create_directories(my_app->get_survey_dir(in_progress) + "/a");
  enter_survey();
  save_quietly(*window, in_progress);
  type_member("a/1234", "Smith");
  save_quietly(*window, in_progress);
  EXPECT_EQ(path_of(in_progress, "a/" + natural_name), window->survey.filename);
  EXPECT_TRUE(file_exists(path_of(in_progress, natural_name))) << "a survey of another name";
}

TEST_F(SaveSurvey, KeepsItsOnlyFileWhenItsPathIsSpelledDifferently)
{
  enter_survey();
  type_member("./1234", "Smith");
  save_quietly(*window, in_progress);
  ASSERT_EQ(path_of(in_progress, "./" + natural_name), window->survey.filename);
  type_member("1234", "Smith");
  save_quietly(*window, in_progress);
  EXPECT_EQ(path_of(in_progress, natural_name), window->survey.filename);
  EXPECT_EQ(Names{file(natural_name)}, names_in(in_progress));
  EXPECT_EQ(window->survey.xml_current.raw(), read_file(window->survey.filename));
}

TEST_F(SaveSurvey, KeepsItsNewFileIfTheOldOneWithAnotherSpellingWasMissing)
{
  enter_survey();
  type_member("./1234", "Smith");
  save_quietly(*window, in_progress);
  fs::remove(window->survey.filename);
  type_member("1234", "Smith");
  save_quietly(*window, in_progress);
  EXPECT_EQ(Names{file(natural_name)}, names_in(in_progress));
}

TEST_F(SaveSurvey, ReplacesItsFileAfterUnmarkingMovedItToAnotherFileSystem)
{
  const std::string other = directory_on_another_file_system(application_dir.root);
  ASSERT_NE("", other) << "this machine has no second file system that the test can write to";
  fs::remove_all(my_app->get_survey_dir(ready));
  fs::create_directory_symlink(other, my_app->survey_root + "/Ready To Upload");
  enter_survey();
  save_quietly(*window, ready);
  wait_for_a_later_time_than_that_of(window->survey.filename);

  StartPanel& panel = *window->start_panel;
  panel.survey_tree->expand_all();
  panel.survey_tree->set_cursor(Gtk::TreePath("1:0"));
  panel.on_mark_button();
  ASSERT_EQ(path_of(in_progress, natural_name), window->survey.filename);
  window->survey_panel2->bottom_time->set_text("45");
  save_quietly(*window, in_progress);
  EXPECT_EQ(window->survey.xml_current.raw(), read_file(path_of(in_progress, natural_name)));
  EXPECT_EQ(Names(), names_in(ready));
  fs::remove_all(other);
}

TEST_F(SaveSurvey, RunsUnameEvenIfTheDocumentCannotBeGenerated)
{
  const std::string commands = application_dir.root + "/commands";
  write_file(commands + "/uname", "#!/bin/sh\necho asked >>\"$0.log\"\n");
  fs::permissions(commands + "/uname", fs::perms::owner_all);
  enter_survey();
  window->survey.abundances[10] = 77;
  const std::string previous = Glib::getenv("PATH");
  Glib::setenv("PATH", commands + ":" + previous);
  Glib::ustring error_text;
  EXPECT_EQ(RET_FAILURE, window->generate_xml_string(error_text, false));
  Glib::setenv("PATH", previous);
  EXPECT_EQ("Internal error: abun 77 -> resp -1?!", error_text);
  EXPECT_EQ("asked\n", read_file(commands + "/uname.log"));
}

TEST_F(SaveSurvey, RunsUnameForASaveButNotForACheckOfChanges)
{
  const std::string commands = application_dir.root + "/commands";
  write_file(commands + "/uname", "#!/bin/sh\necho asked >>\"$0.log\"\necho Reef\n");
  fs::permissions(commands + "/uname", fs::perms::owner_all);
  enter_survey();
  const std::string previous = Glib::getenv("PATH");
  Glib::setenv("PATH", commands + ":" + previous);
  save_quietly(*window, in_progress);
  EXPECT_FALSE(window->file_needs_saving());
  window->survey_panel2->bottom_time->set_text("46");
  EXPECT_TRUE(window->file_needs_saving());
  Glib::setenv("PATH", previous);
  EXPECT_EQ("asked\n", read_file(commands + "/uname.log"));
  EXPECT_NE(std::string::npos, window->survey.xml_current.raw().find("software_platform=\"Reef\""));
}

TEST_F(SaveSurvey, ReportsADocumentThatCannotBeGenerated)
{
  enter_survey();
  save_quietly(*window, in_progress);
  const std::string path = window->survey.filename;
  const std::string saved = read_file(path);
  window->survey.abundances[10] = 77;
  EXPECT_EQ(failed_to_save_to(path) + "Internal error: abun 77 -> resp -1?!",
            failure_of_save(in_progress));
  EXPECT_EQ(saved, read_file(path));
  EXPECT_EQ(path, window->survey.filename);
}

TEST_F(SaveSurvey, WritesAnyBytesToAFile)
{
  const std::string path = application_dir.root + "/download";
  const std::string bytes("BZh9\0\xff", 6);
  expect_no_dialog([&] {
    EXPECT_EQ(RET_SUCCESS, window->write_file(path, bytes.data(), bytes.size()));
    EXPECT_EQ(bytes, read_file(path));
    EXPECT_EQ(RET_SUCCESS, window->write_file(path, "", 0));
    EXPECT_EQ("", read_file(path));
  });
}

TEST_F(SaveSurvey, ReportsAFileThatCannotBeWritten)
{
  const std::string path = application_dir.root + "/R&D <1>/download";
  RetCode result = RET_SUCCESS;
  const SeenDialog seen =
      answer_next_dialog(ok, [&] { result = window->write_file(path, "x", 1); });
  EXPECT_EQ(RET_FAILURE, result);
  EXPECT_EQ("Error occurred", seen.title);
  EXPECT_TRUE(begins_with(seen.text, "FAILED to write to " + path + "!\n")) << seen.text;
  EXPECT_NE(std::string::npos, seen.text.raw().find("No such file or directory")) << seen.text;
}
