#include "store/saving-test.h"
#include "support/dialogs.h"
#include "support/main-loop.h"
#include "support/output.h"
#include "ui/listed-panel.h"
#include "ui/survey-panel1.h"
#include "ui/survey-panel2.h"
#include "ui/survey-window.h"

#include <gtkmm/messagedialog.h>

namespace {

using Names = std::vector<std::string>;

const auto in_progress = MyApp::WD_IN_PROGRESS;
const auto ready = MyApp::WD_READY_TO_UPLOAD;
const int save = Gtk::RESPONSE_ACCEPT;
const int abandon = Gtk::RESPONSE_NO;
const int cancel = Gtk::RESPONSE_CANCEL;
const int ok = Gtk::RESPONSE_OK;

class UnsavedChanges : public SavingTest
{
public:
  // Starts to close the window, with these answers. Returns whether it may be closed.
  bool may_close(const std::vector<int>& responses)
  {
    bool may = false;
    seen = answer_dialogs(responses,
                          [&] { may = window->check_file_save_okay("closing this survey"); });
    return may;
  }

  // Generates a document. Returns the text of the error, or an empty text on success.
  Glib::ustring generation_error(bool omit_member = false)
  {
    Glib::ustring error_text = "left over";
    const RetCode result = window->generate_xml_string(error_text, omit_member);
    EXPECT_EQ(error_text.empty() ? RET_SUCCESS : RET_FAILURE, result);
    return error_text;
  }

  std::vector<SeenDialog> seen;
};

} // namespace

TEST_F(UnsavedChanges, DoNotExistInANewWindow)
{
  EXPECT_FALSE(window->file_needs_saving());
  EXPECT_TRUE(may_close({}));
}

TEST_F(UnsavedChanges, DoNotIncludeTheMemberOfANewSurvey)
{
  type_member("1234", "Smith");
  EXPECT_FALSE(window->file_needs_saving());
  EXPECT_TRUE(may_close({}));
}

TEST_F(UnsavedChanges, IncludeAllOtherEntries)
{
  window->survey_panel2->surface_temp->set_text("12");
  EXPECT_TRUE(window->file_needs_saving());
  window->survey_panel2->surface_temp->set_text(" ");
  EXPECT_FALSE(window->file_needs_saving()) << "the entry is empty again";
  choose_subregion("Northwest");
  EXPECT_TRUE(window->file_needs_saving());
}

TEST_F(UnsavedChanges, DoNotExistAfterASave)
{
  enter_survey();
  EXPECT_TRUE(window->file_needs_saving());
  save_quietly(*window, in_progress);
  EXPECT_FALSE(window->file_needs_saving());
  type_member("1234", "Smythe");
  EXPECT_TRUE(window->file_needs_saving()) << "the member of a saved survey counts";
}

TEST_F(UnsavedChanges, IncludeADifferenceOnlyOfBytes)
{
  enter_survey();
  type_member("1234", "caf\u00e9");
  save_quietly(*window, in_progress);
  type_member("1234", "cafe\u0301"); // looks the same on the screen
  EXPECT_TRUE(window->file_needs_saving());
}

TEST_F(UnsavedChanges, DoNotExistInANewSurveyThatKeepsMemberAndLocation)
{
  enter_survey();
  save_quietly(*window, in_progress);
  expect_no_dialog([&] { window->on_action_FileNew("FileNew"); });
  ASSERT_EQ(1U, visible_windows().size());
  window = visible_windows().front();
  EXPECT_EQ("PNW", window->survey.subregion);
  EXPECT_FALSE(window->file_needs_saving());
  window->survey_panel2->bottom_time->set_text("45");
  EXPECT_TRUE(window->file_needs_saving());
}

TEST_F(UnsavedChanges, CauseAQuestionWithThisText)
{
  enter_survey();
  EXPECT_FALSE(may_close({cancel}));
  ASSERT_EQ(1U, seen.size());
  EXPECT_EQ("Survey Not Saved Yet!", seen[0].title);
  EXPECT_EQ("Survey has been changed without being saved!\n"
            "Save it before closing this survey?\n"
            "Click Save to save and proceed,\n"
            "No to abandon your survey,\n"
            "or Cancel to do nothing instead of closing this survey.",
            seen[0].text);
  EXPECT_EQ((std::vector<Glib::ustring>{"gtk-save", "gtk-no", "gtk-cancel"}), seen[0].buttons);
  EXPECT_EQ(Gtk::MESSAGE_WARNING, seen[0].message_type);
  EXPECT_TRUE(seen[0].has_icon);
}

TEST_F(UnsavedChanges, AreTracedWithBothTextsAtLevelOne)
{
  enter_survey();
  const Glib::ustring last_saved = window->survey.xml_last_saved;
  std::string said;
  answer_next_dialog(cancel, [&] {
    const TraceLevel level(1);
    said = output_of([&] { window->check_file_save_okay("exiting this program"); });
  });
  EXPECT_EQ("check_file_save_okay(\"exiting this program\"):\n    last saved = " +
                last_saved.raw() + "\n    now = " + window->survey.xml_current.raw() + "\n",
            said);
}

TEST_F(UnsavedChanges, StayOnCancelOrIfTheQuestionIsClosed)
{
  enter_survey();
  EXPECT_FALSE(may_close({cancel}));
  EXPECT_FALSE(may_close({Gtk::RESPONSE_DELETE_EVENT}));
  EXPECT_EQ(Names(), names_in(in_progress));
  EXPECT_TRUE(window->file_needs_saving());
}

TEST_F(UnsavedChanges, AreDiscardedOnNo)
{
  enter_survey();
  EXPECT_TRUE(may_close({abandon}));
  EXPECT_EQ(Names(), names_in(in_progress));
}

TEST_F(UnsavedChanges, AreSavedOnSaveWithAMessage)
{
  enter_survey();
  EXPECT_TRUE(may_close({save, ok}));
  ASSERT_EQ(2U, seen.size());
  EXPECT_EQ("Survey Saved", seen[1].title);
  EXPECT_EQ(1U, seen[1].buttons.size());
  EXPECT_EQ(Names{natural_name + ".MAVO-Survey"}, names_in(in_progress));
}

TEST_F(UnsavedChanges, MoveAReadySurveyToInProgress)
{
  enter_survey();
  save_quietly(*window, ready);
  window->survey_panel2->bottom_time->set_text("45");
  EXPECT_TRUE(may_close({save, ok}));
  EXPECT_EQ(Names(), names_in(ready));
  EXPECT_EQ(Names{natural_name + ".MAVO-Survey"}, names_in(in_progress));
}

TEST_F(UnsavedChanges, KeepTheWindowIfTheyCannotBeSaved)
{
  window->survey_panel2->surface_temp->set_text("12");
  EXPECT_FALSE(may_close({save, ok}));
  ASSERT_EQ(2U, seen.size());
  EXPECT_EQ("ERROR: Survey NOT Saved!!!", seen[1].title);
  EXPECT_EQ("Sorry, you must select a location before you can save a survey!", seen[1].text);
}

TEST_F(UnsavedChanges, OfAnUploadedSurveyCanOnlyBeDiscarded)
{
  enter_survey();
  save_quietly(*window, in_progress);
  window->survey.is_uploaded = true;
  choose(*window->listed_panel->species_view, "With invertebrates");
  EXPECT_FALSE(may_close({save, ok}));
  ASSERT_EQ(2U, seen.size());
  EXPECT_EQ("This survey was already uploaded and cannot be changed offline.", seen[1].text);
  EXPECT_TRUE(may_close({abandon}));
}

TEST_F(UnsavedChanges, CauseAQuestionWhenTheWindowIsClosed)
{
  enter_survey();
  answer_next_dialog(cancel, [&] {
    window->close(); // asynchronous
    settle();
  });
  EXPECT_TRUE(window->get_visible());
  answer_next_dialog(abandon, [&] { window->on_action_FileQuit("FileQuit"); });
  EXPECT_FALSE(window->get_visible());
}

TEST_F(UnsavedChanges, AreAssumedIfTheDocumentCannotBeGenerated)
{
  choose_subregion("Northwest");
  choose_survey_type("Northwest: abundance");
  window->survey.abundances = {{10, 3}};
  choose_survey_type("Northwest: fish and invertebrates"); // has no class 3
  EXPECT_EQ("Internal error: abun 3 -> resp -1?!", generation_error());
  EXPECT_FALSE(may_close({cancel})) << "the species would be lost without a question";
}

TEST_F(UnsavedChanges, KeepTheLastDocumentIfANewOneCannotBeGenerated)
{
  enter_survey();
  EXPECT_EQ("", generation_error());
  const std::string previous = window->survey.xml_current.raw();
  window->survey.abundances[10] = 77;
  window->survey_panel2->bottom_time->set_text("45");
  EXPECT_EQ("Internal error: abun 77 -> resp -1?!", generation_error());
  EXPECT_EQ(previous, window->survey.xml_current.raw());
}

TEST_F(UnsavedChanges, AreComparedWithoutTheMemberIfThatIsOmitted)
{
  enter_survey();
  ASSERT_EQ("", generation_error(true));
  const std::string without = window->survey.xml_current.raw();
  EXPECT_NE(std::string::npos,
            without.find("<member_id></member_id>\n    <last_name></last_name>"));
  type_member("", "");
  ASSERT_EQ("", generation_error(false));
  EXPECT_EQ(without, window->survey.xml_current.raw());
}

TEST_F(UnsavedChanges, DoNotExistBetweenTwoDocumentsOfTheSameSurvey)
{
  enter_survey();
  ASSERT_EQ("", generation_error());
  const std::string first = window->survey.xml_current.raw();
  ASSERT_EQ("", generation_error());
  EXPECT_EQ(first, window->survey.xml_current.raw());
}

TEST_F(UnsavedChanges, DoNotIncludeAMissingUnit)
{
  window->survey_panel2->temp_units->unset_active();
  ASSERT_EQ("", generation_error());
  EXPECT_NE(std::string::npos, window->survey.xml_current.raw().find("<temp_units>F</temp_units>"));
  EXPECT_FALSE(window->file_needs_saving());
}
