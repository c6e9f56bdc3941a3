#include "store/saving-test.h"
#include "store/survey-file.h"
#include "support/dialogs.h"
#include "support/main-loop.h"
#include "ui/start-panel.h"
#include "ui/survey-window.h"

#include <gtkmm/filechooserdialog.h>
#include <gtkmm/messagedialog.h>

#include <filesystem>

namespace fs = std::filesystem;

namespace {

class DeleteSurvey : public SavingTest
{
public:
  std::string put(const std::string& text, const std::string& name = "saved") const
  {
    std::string path = path_of(MyApp::WD_IN_PROGRESS, name);
    write_file(path, text);
    return path;
  }
};

} // namespace

TEST_F(DeleteSurvey, AsksAndThenRemovesTheFile)
{
  const std::string path = put(SurveyFile().text());
  window->start_panel->build_survey_model();
  bool gone = false;
  const SeenDialog seen =
      answer_next_dialog(Gtk::RESPONSE_ACCEPT, [&] { gone = window->maybe_delete_survey(path); });
  EXPECT_TRUE(gone);
  EXPECT_FALSE(file_exists(path));
  EXPECT_EQ("Really delete saved survey?", seen.title);
  EXPECT_EQ("Really delete this survey?\n\nMember 1234 - Northwest: fish and invertebrates - "
            "2021-06-30 at 9 AM - Rosario Wall",
            seen.text);
  EXPECT_EQ(Gtk::MESSAGE_INFO, seen.message_type);
  EXPECT_EQ((std::vector<Glib::ustring>{"gtk-yes", "gtk-cancel"}), seen.buttons);
  const auto first = window->start_panel->store->children()[0];
  EXPECT_EQ("In Progress (none)", first.get_value(window->start_panel->columns.description));
}

TEST_F(DeleteSurvey, ShowsADescriptionWithMarkupCharactersLiterally)
{
  const std::string path =
      put(SurveyFile().with("member_id", "<member_id>&lt;7&gt; &amp;</member_id>").text());
  const SeenDialog seen =
      answer_next_dialog(Gtk::RESPONSE_CANCEL, [&] { window->maybe_delete_survey(path); });
  EXPECT_NE(std::string::npos, seen.text.raw().find("Member <7> & - ")) << seen.text;
}

TEST_F(DeleteSurvey, KeepsTheFileOnAnyOtherAnswer)
{
  const std::string path = put(SurveyFile().text());
  for (const int answer : {Gtk::RESPONSE_CANCEL, Gtk::RESPONSE_DELETE_EVENT}) {
    answer_next_dialog(answer, [&] { EXPECT_FALSE(window->maybe_delete_survey(path)); });
    EXPECT_TRUE(file_exists(path));
  }
}

TEST_F(DeleteSurvey, RefusesAFileThatIsNotASurvey)
{
  const std::string path = put("a <note>");
  const SeenDialog seen = answer_next_dialog(
      Gtk::RESPONSE_OK, [&] { EXPECT_FALSE(window->maybe_delete_survey(path)); });
  EXPECT_EQ("Not a survey file?", seen.title);
  EXPECT_EQ(path + " does not appear to be a saved survey file!", seen.text);
  EXPECT_TRUE(file_exists(path));
}

TEST_F(DeleteSurvey, ReportsAFileThatCannotBeRemoved)
{
  const std::string path = put(SurveyFile().text());
  // Another program removes the file while the question is open.
  int dialogs = 0;
  const auto meet = [&](Gtk::Dialog& dialog) {
    if (++dialogs == 1) {
      fs::remove(path);
      dialog.response(Gtk::RESPONSE_ACCEPT);
    } else {
      EXPECT_EQ("Deletion Failed", dialog.get_title());
      dialog.response(Gtk::RESPONSE_OK);
    }
  };
  meet_dialogs(2, meet, [&] { EXPECT_FALSE(window->maybe_delete_survey(path)); });
}

TEST_F(DeleteSurvey, OffersTheCompleteStoreInItsDialog)
{
  const std::string path = put(SurveyFile().text());
  int dialogs = 0;
  const auto meet = [&](Gtk::Dialog& dialog) {
    if (++dialogs == 1) {
      auto& chooser = dynamic_cast<Gtk::FileChooserDialog&>(dialog);
      EXPECT_EQ("Delete saved survey", chooser.get_title());
      EXPECT_EQ(my_app->survey_root, chooser.get_current_folder());
      EXPECT_EQ(1U, chooser.list_filters().size());
      chooser.set_filename(path);
      while (chooser.get_filename() != path)
        settle();
      chooser.response(Gtk::RESPONSE_OK);
    } else {
      dialog.response(Gtk::RESPONSE_ACCEPT);
    }
  };
  meet_dialogs(2, meet, [&] { window->on_action_FileDelete("FileDelete"); });
  EXPECT_FALSE(file_exists(path));
}

TEST_F(DeleteSurvey, DoesNothingWhenItsDialogIsCancelled)
{
  const std::string path = put(SurveyFile().text());
  answer_next_dialog(Gtk::RESPONSE_CANCEL, [&] { window->on_action_FileDelete("FileDelete"); });
  EXPECT_TRUE(file_exists(path));
}

TEST_F(DeleteSurvey, KeepsTheSurveyInTheWindowSoThatItCanBeSavedAgain)
{
  enter_survey();
  save_quietly(*window, MyApp::WD_IN_PROGRESS);
  const std::string path = window->survey.filename;
  answer_next_dialog(Gtk::RESPONSE_ACCEPT, [&] { window->maybe_delete_survey(path); });
  EXPECT_FALSE(file_exists(path));
  save_quietly(*window, MyApp::WD_IN_PROGRESS);
  EXPECT_TRUE(file_exists(path));
}
