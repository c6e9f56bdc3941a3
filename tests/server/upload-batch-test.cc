#include "server/server-test.h"
#include "store/survey-file.h"
#include "ui/start-panel.h"
#include "ui/survey-panel2.h"
#include "ui/survey-window.h"

#include <algorithm>
#include <filesystem>
#include <functional>

namespace fs = std::filesystem;

namespace {

const char* const file_failed = "Upload Failed!";
const char* const go_on = "Continue uploading surveys?";
const char* const all_failed = "Upload Failed";
const char* const some_arrived = "Upload Partially Successful";

const char* const description =
    "Member 1234 - Northwest: fish and invertebrates - 2021-06-30 at 9 AM - Rosario Wall";

// Tests the upload of all surveys that are ready.
class UploadAll : public ServerTest
{
public:
  // Writes `count` surveys to Ready To Upload: 1.MAVO-Survey, 2.MAVO-Survey, ...
  void put_ready(int count) const
  {
    for (int i = 1; i <= count; ++i)
      put(ready, std::to_string(i) + ".MAVO-Survey", SurveyFile().text());
  }

  // Enters a complete survey into the window and saves it for upload.
  void save_ready()
  {
    enter_complete_survey();
    save_quietly(*window, ready);
  }

  // Starts a server that refuses these surveys of the queue: 1, 2, ...
  void serve_refusing(const std::vector<int>& refused, int count)
  {
    Names options;
    for (int i = 1; i <= count; ++i) {
      options.emplace_back("--upload");
      const bool refuses = std::find(refused.begin(), refused.end(), i) != refused.end();
      options.emplace_back(refuses ? "status=422,error=No " + std::to_string(i) : "ok");
    }
    serve(options);
  }

  std::vector<SeenDialog> upload_ready(const std::vector<int>& responses)
  {
    auto seen = answer_dialogs(
        responses, [&] { window->do_upload_all_ready(my_app->get_ready_survey_list()); });
    seen.resize(responses.size()); // missing dialogs have already been reported
    return seen;
  }

  static Names files(const std::vector<int>& numbers)
  {
    Names names;
    for (const int number : numbers)
      names.push_back(std::to_string(number) + ".MAVO-Survey");
    return names;
  }
};

} // namespace

TEST_F(UploadAll, SendsOneAfterTheOtherAndReportsTheirNumber)
{
  const struct {
    int count;
    const char* said;
  } cases[] = {{1, "Successfully uploaded one survey.\n"},
               {2, "Successfully uploaded 2 surveys.\n"},
               {11, "Successfully uploaded 11 surveys.\n"}};
  for (const auto& c : cases) {
    serve();
    put_ready(c.count);
    const auto seen = upload_ready({ok, ok});
    EXPECT_EQ((Titles{succeeded, up_to_date}), titles_of(seen));
    EXPECT_EQ(c.said + second_step(), seen[0].text);
    expect_next_steps(seen[0]);
    EXPECT_EQ(Names(), names_in(ready));
    EXPECT_EQ(static_cast<std::size_t>(c.count), names_in(uploaded).size());
  }
}

TEST_F(UploadAll, SendsInTheOrderOfTheFileNames)
{
  serve();
  put_ready(3);
  upload_ready({ok, ok});
  for (int i = 1; i <= 3; ++i) {
    const std::string number = std::to_string(i);
    const std::string request = read_file(server->requests + number + "-upload.txt");
    EXPECT_NE(std::string::npos, request.find("filename=\"" + number + ".MAVO-Survey\""));
  }
}

TEST_F(UploadAll, AsksAfterAFailureWhetherToContinue)
{
  serve_refusing({2}, 4);
  put_ready(3);
  put(ready, "4 <&>", "no survey");
  const auto seen = upload_ready({ok, no, ok, ok});
  EXPECT_EQ((Titles{file_failed, go_on, some_arrived, up_to_date}), titles_of(seen));
  EXPECT_EQ("Failed to upload file: No 2", seen[0].text);
  EXPECT_EQ(Glib::ustring("Continue uploading remaining surveys?\n\n") + description + "\n" +
                my_app->get_survey_dir(ready) +
                "/4 <&>\n\nClick Yes to contine uploading, or\nClick No to stop uploading.",
            seen[1].text);
  EXPECT_EQ((Titles{"gtk-yes", "gtk-no"}), seen[1].buttons);
  EXPECT_EQ((std::vector<int>{yes, no}), seen[1].responses);
  EXPECT_EQ(Gtk::MESSAGE_INFO, seen[1].message_type);
  EXPECT_TRUE(seen[1].has_icon);
}

TEST_F(UploadAll, ContinuesWithTheOthersOnYes)
{
  serve_refusing({2}, 4);
  put_ready(4);
  const auto seen = upload_ready({ok, yes, ok, ok});
  EXPECT_EQ((Titles{file_failed, go_on, some_arrived, up_to_date}), titles_of(seen));
  EXPECT_EQ("Failed to upload one survey.\nSuccessfully uploaded 3 surveys.\n" + second_step(),
            seen[2].text);
  EXPECT_EQ(files({1, 3, 4}), names_in(uploaded));
  EXPECT_EQ(files({2}), names_in(in_progress));
  EXPECT_EQ(Names(), names_in(ready));
  EXPECT_EQ(SurveyFile().text(), read_file(my_app->get_survey_dir(in_progress) + "/2.MAVO-Survey"));
}

TEST_F(UploadAll, StopsOnAnyOtherAnswer)
{
  for (const int answer : {no, closed, cancel, ok}) {
    fs::remove_all(my_app->get_survey_dir(in_progress)); // surveys of the previous answer
    serve_refusing({2}, 4);
    put_ready(4);
    const auto seen = upload_ready({ok, answer, ok, ok});
    EXPECT_EQ((Titles{file_failed, go_on, some_arrived, up_to_date}), titles_of(seen));
    EXPECT_EQ("Failed to upload one survey.\nSuccessfully uploaded one survey.\n" + second_step(),
              seen[2].text);
    EXPECT_EQ(files({3, 4}), names_in(ready)) << "not tried";
    EXPECT_EQ(files({2}), names_in(in_progress));
  }
}

TEST_F(UploadAll, AsksNothingIfTheLastOneFails)
{
  serve_refusing({3}, 3);
  put_ready(3);
  const auto seen = upload_ready({ok, ok, ok});
  EXPECT_EQ((Titles{file_failed, some_arrived, up_to_date}), titles_of(seen));
  EXPECT_EQ("Failed to upload one survey.\nSuccessfully uploaded 2 surveys.\n" + second_step(),
            seen[1].text);
  EXPECT_EQ(files({3}), names_in(in_progress));
}

TEST_F(UploadAll, DoesNotMentionASecondStepIfAllFailed)
{
  serve({"--upload", "status=500"});
  put_ready(1);
  auto seen = upload_ready({ok, ok, ok});
  EXPECT_EQ((Titles{file_failed, all_failed, up_to_date}), titles_of(seen));
  EXPECT_EQ("Failed to upload one survey.\n", seen[1].text);
  EXPECT_EQ(4U, seen[1].buttons.size());
  EXPECT_EQ(Gtk::MESSAGE_INFO, seen[1].message_type);

  fs::remove_all(my_app->get_survey_dir(in_progress));
  put_ready(2);
  seen = upload_ready({ok, yes, ok, ok, ok});
  EXPECT_EQ((Titles{file_failed, go_on, file_failed, all_failed, up_to_date}), titles_of(seen));
  EXPECT_EQ("Failed to upload 2 surveys.\n", seen[3].text);
  EXPECT_EQ(files({1, 2}), names_in(in_progress));
  EXPECT_EQ(Names(), names_in(ready));
}

TEST_F(UploadAll, AsksAboutTheSurveysThatAreReadyNow)
{
  serve({"--upload", "status=500"});
  put_ready(2);
  const auto seen = answer_dialogs({ok, yes, ok, ok}, [&] {
    window->do_upload_all_ready({my_app->get_survey_dir(ready) + "/1.MAVO-Survey"});
  });
  EXPECT_EQ((Titles{file_failed, go_on, all_failed, up_to_date}), titles_of(seen));
  EXPECT_EQ("Failed to upload one survey.\n", seen[2].text);
  EXPECT_EQ(files({2}), names_in(ready)) << "became ready in the meantime";
}

TEST_F(UploadAll, ReportsAFailedSurveyThatCannotLeaveTheQueue)
{
  serve({"--upload", "status=500"});
  put_ready(1);
  fs::remove_all(my_app->survey_root + "/In Progress");
  write_file(my_app->survey_root + "/In Progress", "in the way");
  const auto seen = upload_ready({ok, ok, yes, ok, ok});
  EXPECT_EQ((Titles{file_failed, "Error occurred", go_on, all_failed, up_to_date}),
            titles_of(seen));
  EXPECT_EQ(0U, seen[1].text.find("Failed to move survey file from "));
  EXPECT_EQ(files({1}), names_in(ready));
  EXPECT_EQ(SurveyFile().text(), read_file(my_app->get_survey_dir(ready) + "/1.MAVO-Survey"));
}

TEST_F(UploadAll, ShowsTheNewStatesOnTheStartPage)
{
  serve_refusing({1}, 2);
  put_ready(2);
  window->start_panel->build_survey_model();
  upload_ready({ok, yes, ok, ok});
  const StartPanel& panel = *window->start_panel;
  const auto heading = [&panel](unsigned state) {
    return panel.store->children()[state].get_value(panel.columns.description);
  };
  EXPECT_EQ("In Progress", heading(0));
  EXPECT_EQ("Ready To Upload (none)", heading(1));
  EXPECT_EQ("Uploaded", heading(2));
}

TEST_F(UploadAll, FollowsTheFileOfTheOpenSurvey)
{
  serve({"--upload", "status=500", "--upload", "ok"});
  save_ready();
  upload_ready({ok, ok, ok});
  EXPECT_EQ(path_of(in_progress, natural_name), window->survey.filename);
  EXPECT_FALSE(window->survey.is_uploaded);
  EXPECT_EQ(window->survey.xml_last_saved.raw(), read_file(window->survey.filename));

  save_quietly(*window, ready);
  upload_ready({ok, ok});
  EXPECT_EQ(path_of(uploaded, natural_name), window->survey.filename);
  EXPECT_TRUE(window->survey.is_uploaded);
}

TEST_F(UploadAll, MarksTheOpenSurveyAmongTheRemaining)
{
  serve({"--upload", "status=500"});
  save_ready();
  put(ready, "0", SurveyFile().text());
  const auto seen = upload_ready({ok, no, ok, ok});
  EXPECT_NE(std::string::npos, seen[1].text.raw().find(" - Rosario Wall (current survey)\n"));
}

TEST_F(UploadAll, DoesAfterwardsWhatTheUserChose)
{
  serve();
  put_ready(1);
  auto seen = upload_ready({SurveyWindow::RESPONSE_OPEN_SURVEY, ok, cancel});
  EXPECT_EQ((Titles{succeeded, up_to_date, "Open saved survey"}), titles_of(seen));
  for (const int answer : {-1, -4, -5}) {
    put_ready(1);
    upload_ready({answer, ok});
    EXPECT_EQ(std::vector<SurveyWindow*>{window}, visible_windows()) << answer;
  }
  put_ready(1);
  upload_ready({SurveyWindow::RESPONSE_NEW_SURVEY, ok});
  ASSERT_EQ(1U, visible_windows().size());
  EXPECT_NE(window, visible_windows().front());

  window = visible_windows().front();
  put_ready(1);
  upload_ready({SurveyWindow::RESPONSE_QUIT, ok});
  EXPECT_TRUE(visible_windows().empty());
}

// --- from the menu and the Start page ---

TEST_F(UploadAll, FromTheMenuAsksFirst)
{
  serve();
  put_ready(1);
  put(ready, "2 <&>", "no survey");
  const auto seen =
      answer_next_dialog(cancel, [&] { window->on_action_FileUploadAll("FileUploadAll"); });
  EXPECT_EQ(upload_all, seen.title);
  EXPECT_EQ(Glib::ustring("The following surveys are ready to be uploaded:\n\n") + description +
                "\n" + my_app->get_survey_dir(ready) +
                "/2 <&>\n\nUpload all of these now?\nClick Yes to upload all of them now, or\n"
                "Click Cancel to not upload anything yet.",
            seen.text);
  EXPECT_EQ((Titles{"gtk-yes", "gtk-cancel"}), seen.buttons);
  EXPECT_EQ((std::vector<int>{yes, cancel}), seen.responses);
  EXPECT_EQ(Gtk::MESSAGE_INFO, seen.message_type);
  EXPECT_TRUE(seen.has_icon);
}

TEST_F(UploadAll, ShowsTheEndsOfALongListAndAllTextAroundIt)
{
  serve();
  for (int i = 100; i < 400; ++i)
    put(ready, std::to_string(i) + " <&>" + std::string(60, 'x'), "no survey");
  const auto seen =
      answer_next_dialog(cancel, [&] { window->on_action_FileUploadAll("FileUploadAll"); });
  const std::string text = seen.text;
  const std::string start = "The following surveys are ready to be uploaded:\n\n" +
                            my_app->get_survey_dir(ready) + "/100 <&>xx";
  EXPECT_EQ(0U, text.find(start)) << text.substr(0, 200);
  const std::string end = "\n\nUpload all of these now?\nClick Yes to upload all of them now, or\n"
                          "Click Cancel to not upload anything yet.";
  EXPECT_EQ(text.size() - end.size(), text.rfind(end));
  EXPECT_NE(std::string::npos, text.find("/399 <&>xx"));
  EXPECT_NE(std::string::npos, text.find(" lines left out \u2026\n"));
  EXPECT_EQ(std::string::npos, text.find("/250 <&>xx"));
}

TEST_F(UploadAll, FromTheMenuSendsOnlyOnYes)
{
  serve();
  put_ready(2);
  for (const int answer : {cancel, closed, no}) {
    answer_next_dialog(answer, [&] { window->on_action_FileUploadAll("FileUploadAll"); });
    EXPECT_EQ(files({1, 2}), names_in(ready)) << answer;
    EXPECT_EQ(Names(), server->log()) << answer;
  }
  const auto seen =
      answer_dialogs({yes, ok, ok}, [&] { window->on_action_FileUploadAll("FileUploadAll"); });
  EXPECT_EQ((Titles{upload_all, succeeded, up_to_date}), titles_of(seen));
  EXPECT_EQ(files({1, 2}), names_in(uploaded));
}

TEST_F(UploadAll, FromTheStartPageWorksAsFromTheMenu)
{
  serve();
  put_ready(1);
  const auto seen =
      answer_dialogs({yes, ok, ok}, [&] { press(*window->start_panel->upload_all_button); });
  EXPECT_EQ((Titles{upload_all, succeeded, up_to_date}), titles_of(seen));
  EXPECT_EQ(files({1}), names_in(uploaded));
}

TEST_F(UploadAll, ExplainsHowToMarkSurveysIfNoneIsReady)
{
  serve();
  const auto seen =
      answer_next_dialog(ok, [&] { window->on_action_FileUploadAll("FileUploadAll"); });
  EXPECT_EQ("No Surveys Ready!", seen.title);
  EXPECT_EQ("No surveys are marked as ready to upload.\nFor each survey that you wish to upload, "
            "please open it and then click the \"Mark For Upload\" button.",
            seen.text);
  EXPECT_EQ(Gtk::MESSAGE_WARNING, seen.message_type);
  EXPECT_EQ(Names(), server->log());
}

TEST_F(UploadAll, SavesTheOpenSurveyFirstIfItIsReadyAndChanged)
{
  serve();
  save_ready();
  window->survey_panel2->bottom_time->set_text(""); // incomplete, which causes no question
  answer_dialogs({yes, ok, ok}, [&] { window->on_action_FileUploadAll("FileUploadAll"); });
  EXPECT_EQ(Names{natural_name + ".MAVO-Survey"}, names_in(uploaded));
  const std::string sent = read_file(server->uploads + natural_name + ".MAVO-Survey");
  EXPECT_EQ(window->survey.xml_last_saved.raw(), sent);
  EXPECT_EQ(std::string::npos, sent.find(">45</bottom_time>"));
}

TEST_F(UploadAll, NeitherSavesNorSendsAnOpenSurveyThatIsNotReady)
{
  serve();
  enter_complete_survey();
  save_quietly(*window, in_progress);
  const std::string saved = read_file(window->survey.filename);
  window->survey_panel2->bottom_time->set_text("51");
  put_ready(1);
  answer_dialogs({yes, ok, ok}, [&] { window->on_action_FileUploadAll("FileUploadAll"); });
  EXPECT_EQ(saved, read_file(window->survey.filename));
  EXPECT_EQ(files({1}), names_in(uploaded));
  EXPECT_TRUE(window->file_needs_saving());
}

TEST_F(UploadAll, SendsNothingIfTheOpenSurveyCannotBeSavedFirst)
{
  serve();
  save_ready();
  put_ready(1);
  const std::string path = window->survey.filename;
  window->survey_panel2->bottom_time->set_text("51");
  write_file(path, "of another program");
  window->survey.file_etag = "of another time";
  const auto seen =
      answer_next_dialog(ok, [&] { window->on_action_FileUploadAll("FileUploadAll"); });
  EXPECT_EQ("ERROR: Survey NOT Saved!!!", seen.title);
  EXPECT_EQ(Names(), server->log());
  EXPECT_EQ("of another program", read_file(path));
  EXPECT_EQ(2U, names_in(ready).size());
  EXPECT_FALSE(window->survey.is_uploaded);
  EXPECT_EQ("51", window->survey_panel2->bottom_time->get_text());
  EXPECT_TRUE(window->file_needs_saving());
}

TEST_F(UploadAll, MovesAFailedSurveyToAFreeNameIfItsOwnExists)
{
  serve({"--upload", "status=500", "--upload", "ok"});
  save_ready();
  const std::string text = read_file(window->survey.filename);
  put(in_progress, natural_name + ".MAVO-Survey", "another survey");
  upload_ready({ok, ok, ok});
  EXPECT_EQ("another survey", read_file(path_of(in_progress, natural_name)));
  EXPECT_EQ(path_of(in_progress, natural_name + "-1"), window->survey.filename);
  EXPECT_EQ(text, read_file(window->survey.filename));
  EXPECT_EQ(Names(), names_in(ready));
}
