#include "server/server-test.h"
#include "store/survey-file.h"
#include "support/output.h"
#include "ui/confirm-panel.h"
#include "ui/start-panel.h"
#include "ui/survey-panel2.h"
#include "ui/survey-window.h"

#include <filesystem>
#include <functional>

namespace fs = std::filesystem;

namespace {

const char* const failed = "Upload Failed!";

// Tests the upload of single surveys.
class Upload : public ServerTest
{
public:
  // Enters a complete survey into the window and saves it for upload.
  std::string save_ready()
  {
    enter_complete_survey();
    save_quietly(*window, ready);
    return window->survey.filename;
  }

  std::string put_ready(const std::string& name = "7.MAVO-Survey") const
  {
    return put(ready, name, SurveyFile().text());
  }

  // Returns the file name of the survey that enter_complete_survey() enters.
  std::string base_file() const { return natural_name + ".MAVO-Survey"; }

  // Returns the row of a state on the Start page and the rows of its surveys.
  Names rows_of(int state) const
  {
    const StartPanel& panel = *window->start_panel;
    const auto row = panel.store->children()[static_cast<unsigned>(state)];
    Names rows = {row.get_value(panel.columns.description).raw()};
    for (const auto& child : row.children())
      rows.push_back(child.get_value(panel.columns.description).raw());
    return rows;
  }

  // Selects the survey on the Start page and clicks Upload there.
  void upload_from_start_page(const std::string& path) const
  {
    StartPanel& panel = *window->start_panel;
    Gtk::TreePath row;
    panel.store->foreach_iter([&](const Gtk::TreeIter& iter) {
      if (iter->get_value(panel.columns.path) == path)
        row = panel.store->get_path(iter);
      return !row.empty();
    });
    ASSERT_FALSE(row.empty()) << path;
    panel.survey_tree->expand_to_path(row);
    panel.survey_tree->set_cursor(row);
    panel.do_survey_line_trigger(row, 1, 0);
    press(*panel.upload_button);
  }

  // Uploads a survey that the server refuses. Returns the text of the dialog.
  Glib::ustring failure_text(const char* why = "")
  {
    RetCode result = RET_SUCCESS;
    const SeenDialog seen =
        answer_next_dialog(ok, [&] { result = window->do_upload_file(put_ready()); });
    EXPECT_EQ(RET_FAILURE, result) << why;
    EXPECT_EQ(failed, seen.title) << why;
    EXPECT_EQ(Gtk::MESSAGE_WARNING, seen.message_type) << why;
    EXPECT_EQ(Names{"7.MAVO-Survey"}, names_in(ready)) << why;
    EXPECT_EQ(Names(), names_in(uploaded)) << why;
    return seen.text;
  }
};

// A request that the server stored.
struct Request {
  explicit Request(const std::string& path)
  {
    const std::string text = read_file(path);
    const auto end = text.find("\r\n\r\n");
    head = text.substr(0, end + 2);
    body = text.substr(end + 4);
  }

  // Returns the value of a header; empty if it is missing.
  std::string header(const std::string& name) const
  {
    const auto start = head.find("\r\n" + name + ": ");
    if (start == std::string::npos)
      return "";
    const auto value = start + name.size() + 4;
    return head.substr(value, head.find("\r\n", value) - value);
  }

  std::string head;
  std::string body;
};

// Returns the body of a request with one survey.
std::string form_of_one_file(const std::string& boundary, const std::string& name,
                             const std::string& contents)
{
  return "--" + boundary + "\r\nContent-Disposition: form-data; name=\"survey-file\"; " + name +
         "\r\nContent-Type: application/xml\r\n\r\n" + contents + "\r\n--" + boundary + "--\r\n";
}

} // namespace

TEST_F(Upload, SendsTheFileOnDiskAsTheOnlyPartOfAForm)
{
  const char odd[] = "<?xml?>\r\n\xff\xfe\0 Jos\u00e9 \n--\r\n\r\n";
  const std::string bytes(odd, sizeof odd);
  const struct {
    const char* name;
    const char* name_as_sent;
    std::string contents;
  } cases[] = {
      {"1234-PNW.MAVO-Survey", "filename=\"1234-PNW.MAVO-Survey\"", SurveyFile().text()},
      {"a b.MAVO_survey", "filename=\"a b.MAVO_survey\"", bytes},
      {"N\u00fa\u00f1ez.MAVO-Survey", "filename*=UTF-8''N%C3%BA%C3%B1ez.MAVO-Survey",
       SurveyFile().text()},
  };
  serve({"--upload", "status=500"});
  int count = 0;
  for (const auto& c : cases) {
    const std::string path = put(ready, c.name, c.contents);
    answer_next_dialog(ok, [&] { window->do_upload_file(path); });

    const Request request(server->requests + std::to_string(++count) + "-upload.txt");
    EXPECT_EQ(0U, request.head.find("POST /dataentry/upload-survey.php HTTP/1.1\r\n"));
    const std::string form = "multipart/form-data; boundary=";
    const std::string type = request.header("Content-Type");
    ASSERT_EQ(form, type.substr(0, form.size()));
    EXPECT_EQ(form_of_one_file(type.substr(form.size()), c.name_as_sent, c.contents), request.body);
    EXPECT_EQ(c.contents, read_file(path));
  }
}

TEST_F(Upload, MovesAnAcceptedSurveyAndExplainsTheNextStep)
{
  serve();
  const std::string text = SurveyFile().text();
  const std::string path = put_ready();
  const auto seen = answer_dialogs({ok, ok}, [&] { window->do_upload_single(path); });
  ASSERT_EQ((Titles{succeeded, up_to_date}), titles_of(seen));
  EXPECT_EQ("Survey uploaded successfully.\n" + second_step(), seen[0].text);
  expect_next_steps(seen[0]);

  EXPECT_EQ(Names(), names_in(ready));
  EXPECT_EQ(Names{"7.MAVO-Survey"}, names_in(uploaded));
  EXPECT_EQ(text, read_file(my_app->get_survey_dir(uploaded) + "/7.MAVO-Survey"));
  EXPECT_EQ(text, read_file(server->uploads + "7.MAVO-Survey"));
  EXPECT_EQ(Names{"Ready To Upload (none)"}, rows_of(1));
  EXPECT_EQ(2U, rows_of(2).size());
  EXPECT_EQ((Names{"POST /dataentry/upload-survey.php 201",
                   "GET /offline-data-entry/?get-version=mac 200",
                   "GET /offline-data-entry/?get-version=data-files 200"}),
            server->log());
}

TEST_F(Upload, MakesTheOpenSurveyReadOnlyAndFollowsItsFile)
{
  serve();
  const std::string path = save_ready();
  answer_dialogs({ok, ok}, [&] { window->do_upload_single(path); });
  EXPECT_TRUE(window->survey.is_uploaded);
  EXPECT_EQ(path_of(uploaded, natural_name), window->survey.filename);
  EXPECT_FALSE(window->save_button->get_sensitive());
  EXPECT_FALSE(window->upload_button->get_sensitive());
  EXPECT_FALSE(window->ready_button->get_sensitive());
  EXPECT_EQ(window->survey.xml_last_saved.raw(), read_file(server->uploads + base_file()));
}

TEST_F(Upload, AcceptsAReferenceToTheWindowsOwnPath)
{
  serve();
  save_ready();
  answer_dialogs({ok, ok}, [&] { window->do_upload_single(window->survey.filename); });
  EXPECT_EQ(path_of(uploaded, natural_name), window->survey.filename);
  EXPECT_TRUE(window->survey.is_uploaded);
}

TEST_F(Upload, ReplacesAnUploadedSurveyOfThatNameWithoutAsking)
{
  serve();
  const std::string older = put(uploaded, "7.MAVO-Survey", "older");
  answer_dialogs({ok, ok}, [&] { window->do_upload_single(put_ready()); });
  EXPECT_EQ(Names{"7.MAVO-Survey"}, names_in(uploaded));
  EXPECT_EQ(SurveyFile().text(), read_file(older));
}

TEST_F(Upload, CanBeRepeatedAndIsStoredOnce)
{
  serve();
  answer_dialogs({ok, ok}, [&] { window->do_upload_single(put_ready()); });
  answer_dialogs({ok, ok}, [&] { window->do_upload_single(put_ready()); });
  EXPECT_EQ(1, std::distance(fs::directory_iterator(server->uploads), fs::directory_iterator()));
}

TEST_F(Upload, ShowsTheServersReasonForAFailure)
{
  const struct {
    const char* why;
    const char* spec;
    const char* said;
  } cases[] = {
      {"words", "status=422,error=No such diver.", "No such diver."},
      {"markup", "status=422,error=<b>No</b> such <i>diver</i> &amp; dive", "No such diver & dive"},
      {"no markup", "status=422,error=5 < 6 & so", "5 < 6 & so"},
      {"an unknown tag", "status=422,error=<blink>No</blink>", "<blink>No</blink>"},
      {"a tag left open", "status=422,error=<b>No", "<b>No"},
      {"a percent sign", "status=422,error=100%25 %25s %25n", "100% %s %n"},
      {"not ASCII", "status=422,error=Jos%C3%A9", "Jos\u00e9"},
      {"not UTF-8", "status=422,error=Jos%E9", "Jos\ufffd"},
      {"nothing", "status=422,error=", ""},
      {"no header", "status=422", "Unknown (error header missing)"},
      {"success header with status 200", "status=200,header=X-Survey-Upload-Successful:1",
       "Unknown (error header missing)"},
      {"status 200 with a reason", "status=200,error=Not quite", "Not quite"},
  };
  Names options;
  for (const auto& c : cases) {
    options.emplace_back("--upload");
    options.emplace_back(c.spec);
  }
  serve(options);
  for (const auto& c : cases)
    EXPECT_EQ(Glib::ustring("Failed to upload file: ") + c.said, failure_text(c.why)) << c.why;
}

TEST_F(Upload, ShortensALongReason)
{
  const std::string reason(30000, 'x');
  serve({"--upload", "status=422,error=" + reason});
  const Glib::ustring text = failure_text();
  EXPECT_EQ(0U, text.find("Failed to upload file: xxxxxxxxxx"));
  EXPECT_LT(10000U, text.size());
  EXPECT_GT(reason.size(), text.size());
}

TEST_F(Upload, ReportsConfusionWithoutTheSuccessHeader)
{
  serve({"--upload", "without=X-Survey-Upload-Successful"});
  EXPECT_EQ("Confusion: response is 201 but success header is missing!?", failure_text());
}

TEST_F(Upload, IgnoresTheValueOfTheSuccessHeader)
{
  serve({"--upload", "without=X-Survey-Upload-Successful,header=X-Survey-Upload-Successful:"});
  answer_dialogs({ok, ok}, [&] { window->do_upload_single(put_ready()); });
  EXPECT_EQ(Names{"7.MAVO-Survey"}, names_in(uploaded));
}

TEST_F(Upload, LeavesTheOpenSurveyEditableIfItFailed)
{
  serve({"--upload", "status=503"});
  const std::string path = save_ready();
  answer_dialogs({ok, ok}, [&] { window->do_upload_single(path); });
  EXPECT_FALSE(window->survey.is_uploaded);
  EXPECT_EQ(path, window->survey.filename);
  EXPECT_TRUE(window->save_button->get_sensitive());
  EXPECT_EQ(window->survey.xml_last_saved.raw(), read_file(path));
}

TEST_F(Upload, IsTracedFromLevelOne)
{
  serve({"--upload", "ok", "--upload", "status=500"});
  std::string said;
  expect_no_dialog([&] { said = output_of(0, [&] { window->do_upload_file(put_ready()); }); });
  EXPECT_EQ("", said);
  answer_next_dialog(ok,
                     [&] { said = output_of(1, [&] { window->do_upload_file(put_ready()); }); });
  EXPECT_NE(std::string::npos, said.find("\nupload response code is 500\n")) << said;
  EXPECT_NE(std::string::npos, said.find("\n> POST /dataentry/upload-survey.php HTTP/1.1\n"))
      << said;
  EXPECT_NE(std::string::npos, said.find("<last_name>")) << said;
  EXPECT_NE(std::string::npos, said.find("\n< HTTP/1.1 500 ")) << said;
}

// --- the next action of the user ---

TEST_F(Upload, StartsANewSurveyIfTheUserWantsIt)
{
  serve();
  const std::string path = save_ready();
  answer_dialogs({SurveyWindow::RESPONSE_NEW_SURVEY, ok}, [&] { window->do_upload_single(path); });
  ASSERT_EQ(1U, visible_windows().size());
  EXPECT_NE(window, visible_windows().front());
  EXPECT_EQ("", visible_windows().front()->survey.filename);
}

TEST_F(Upload, EndsTheProgramIfTheUserWantsIt)
{
  serve();
  const std::string path = save_ready();
  answer_dialogs({SurveyWindow::RESPONSE_QUIT, ok}, [&] { window->do_upload_single(path); });
  EXPECT_TRUE(visible_windows().empty());
}

TEST_F(Upload, OffersTheSavedSurveysIfTheUserWantsToOpenOne)
{
  serve();
  const std::string path = save_ready();
  const auto seen = answer_dialogs({SurveyWindow::RESPONSE_OPEN_SURVEY, ok, cancel},
                                   [&] { window->do_upload_single(path); });
  EXPECT_EQ((Titles{succeeded, up_to_date, "Open saved survey"}), titles_of(seen));
  EXPECT_TRUE(window->get_visible());
}

TEST_F(Upload, DoesNothingElseOnAnyOtherAnswer)
{
  serve();
  for (const int answer : {-1, -4, -5, -6}) {
    const std::string path = put_ready();
    answer_dialogs({answer, ok}, [&] { window->do_upload_single(path); });
    EXPECT_EQ(std::vector<SurveyWindow*>{window}, visible_windows()) << answer;
  }
}

// --- from the menu and from the window ---

TEST_F(Upload, OfTheOpenSurveySavesItFirst)
{
  serve();
  enter_complete_survey();
  save_quietly(*window, in_progress);
  window->survey_panel2->bottom_time->set_text("50");
  const auto seen = answer_dialogs({ok, ok}, [&] { window->on_action_FileUploadThis("x"); });
  EXPECT_EQ((Titles{succeeded, up_to_date}), titles_of(seen));
  EXPECT_EQ(Names(), names_in(in_progress));
  EXPECT_EQ(Names(), names_in(ready));
  EXPECT_NE(std::string::npos, read_file(server->uploads + base_file()).find(">50</bottom_time>"));
  EXPECT_EQ(window->survey.xml_last_saved.raw(), read_file(path_of(uploaded, natural_name)));
  EXPECT_TRUE(window->survey.is_uploaded);
}

TEST_F(Upload, OfTheOpenSurveyDoesNotAskAboutTheOthersFromTheMenu)
{
  serve();
  enter_complete_survey();
  put_ready();
  const auto seen = answer_dialogs({ok, ok}, [&] { window->on_action_FileUploadThis("x"); });
  EXPECT_EQ((Titles{succeeded, up_to_date}), titles_of(seen));
  EXPECT_EQ(Names{"7.MAVO-Survey"}, names_in(ready));
}

TEST_F(Upload, LeavesAFailedSurveyReadyForTheNextTry)
{
  serve({"--upload", "close=before", "--upload", "ok"});
  enter_complete_survey();
  auto seen = answer_dialogs({ok, ok}, [&] { window->on_action_FileUploadThis("x"); });
  EXPECT_EQ((Titles{failed, up_to_date}), titles_of(seen));
  EXPECT_EQ(Names{base_file()}, names_in(ready));
  EXPECT_EQ(path_of(ready, natural_name), window->survey.filename);
  seen = answer_dialogs({ok, ok}, [&] { window->on_action_FileUploadThis("x"); });
  EXPECT_EQ((Titles{succeeded, up_to_date}), titles_of(seen));
  EXPECT_EQ(Names{base_file()}, names_in(uploaded));
}

TEST_F(Upload, IsRefusedForASurveyThatWasUploaded)
{
  serve();
  save_ready();
  window->set_survey_is_uploaded();
  const auto seen = answer_next_dialog(ok, [&] { window->on_action_FileUploadThis("x"); });
  EXPECT_EQ("ERROR: Survey Already Uploaded!!!", seen.title);
  EXPECT_EQ("This survey was already uploaded and cannot be changed offline.", seen.text);
  EXPECT_EQ(Gtk::MESSAGE_WARNING, seen.message_type);
  EXPECT_EQ(Names(), server->log());
}

TEST_F(Upload, OfAnIncompleteSurveyEndsOnTheConfirmationPage)
{
  serve();
  using Action = std::function<void()>;
  const Action actions[] = {[&] { window->on_action_FileUploadThis("x"); },
                            [&] { window->on_upload_button(); }};
  for (const auto& action : actions) {
    enter_survey();
    go_to_page(0);
    window->survey.survey_complete = true; // the result of an earlier check
    const auto seen = answer_next_dialog(ok, action);
    EXPECT_EQ("Can't upload yet", seen.title);
    EXPECT_EQ("Survey data is missing or invalid.", seen.text);
    EXPECT_EQ(Gtk::MESSAGE_WARNING, seen.message_type);
    EXPECT_EQ(window->confirm_panel->page, window->notebook->get_current_page());
    EXPECT_FALSE(window->survey.survey_complete);
    EXPECT_EQ(Names(), names_in(ready));
    EXPECT_EQ(Names(), server->log());
  }
}

TEST_F(Upload, SendsNothingIfTheSurveyCannotBeSaved)
{
  serve();
  enter_complete_survey();
  fs::remove_all(my_app->get_survey_dir(ready));
  write_file(my_app->survey_root + "/Ready To Upload", "in the way");
  using Action = std::function<void()>;
  const Action actions[] = {[&] { window->on_action_FileUploadThis("x"); },
                            [&] { window->on_upload_button(); }};
  for (const auto& action : actions)
    EXPECT_EQ("ERROR: Survey NOT Saved!!!", answer_next_dialog(ok, action).title);
  EXPECT_EQ(Names(), server->log());
  EXPECT_FALSE(window->survey.is_uploaded);
}

TEST_F(Upload, ByTheButtonAsksNothingIfNoOtherSurveyIsReady)
{
  serve();
  enter_complete_survey();
  go_to_page(window->confirm_panel->page);
  const auto seen = answer_dialogs({ok, ok}, [&] { press(*window->upload_button); });
  EXPECT_EQ((Titles{succeeded, up_to_date}), titles_of(seen));
  EXPECT_EQ(Names{base_file()}, names_in(uploaded));
}

TEST_F(Upload, ByTheButtonAsksAboutTheOthersThatAreReady)
{
  serve();
  enter_complete_survey();
  put(ready, "7 <&>", "no survey");
  put(ready, "6.MAVO-Survey", SurveyFile().text());
  go_to_page(window->confirm_panel->page);
  const auto seen = answer_next_dialog(cancel, [&] { press(*window->upload_button); });
  EXPECT_EQ(upload_all, seen.title);
  EXPECT_EQ(
      "The following surveys are ready to be uploaded:\n\n"
      "Member 1234 - Northwest: abundance - 2021-06-30 at 9 AM - Rosario Wall "
      "(current survey)\n"
      "Member 1234 - Northwest: fish and invertebrates - 2021-06-30 at 9 AM - Rosario Wall\n" +
          my_app->get_survey_dir(ready) +
          "/7 <&>\n\n"
          "Upload all of these now?\nClick Yes to upload all of them now,\n"
          "Click No to upload only the currently open survey, or\n"
          "Click Cancel to not upload anything yet.",
      seen.text);
  EXPECT_EQ((Titles{"gtk-yes", "gtk-no", "gtk-cancel"}), seen.buttons);
  EXPECT_EQ((std::vector<int>{yes, no, cancel}), seen.responses);
  EXPECT_EQ(Gtk::MESSAGE_INFO, seen.message_type);
  EXPECT_TRUE(seen.has_icon);
}

TEST_F(Upload, ByTheButtonLeavesTheOpenSurveySavedOnCancel)
{
  serve();
  enter_complete_survey();
  put_ready();
  go_to_page(window->confirm_panel->page);
  answer_next_dialog(cancel, [&] { press(*window->upload_button); });
  EXPECT_EQ((Names{base_file(), "7.MAVO-Survey"}), names_in(ready));
  EXPECT_EQ(path_of(ready, natural_name), window->survey.filename);
  EXPECT_FALSE(window->survey.is_uploaded);
  EXPECT_FALSE(window->file_needs_saving());
  EXPECT_EQ(Names(), server->log());
}

TEST_F(Upload, ByTheButtonSendsOnlyTheOpenSurveyOnNoOrIfTheQuestionIsClosed)
{
  for (const int answer : {no, closed}) {
    serve();
    open_window();
    enter_complete_survey();
    put_ready();
    go_to_page(window->confirm_panel->page);
    const auto seen = answer_dialogs({answer, ok, ok}, [&] { press(*window->upload_button); });
    EXPECT_EQ((Titles{upload_all, succeeded, up_to_date}), titles_of(seen));
    EXPECT_EQ(Names{"7.MAVO-Survey"}, names_in(ready));
    EXPECT_EQ(Names{base_file()}, names_in(uploaded));
    EXPECT_TRUE(window->survey.is_uploaded);
  }
}

TEST_F(Upload, ByTheButtonSendsAllOnYes)
{
  serve();
  enter_complete_survey();
  put_ready();
  go_to_page(window->confirm_panel->page);
  const auto seen = answer_dialogs({yes, ok, ok}, [&] { press(*window->upload_button); });
  EXPECT_EQ((Titles{upload_all, succeeded, up_to_date}), titles_of(seen));
  EXPECT_EQ(Names(), names_in(ready));
  EXPECT_EQ((Names{base_file(), "7.MAVO-Survey"}), names_in(uploaded));
  EXPECT_TRUE(window->survey.is_uploaded);
}

// --- from the Start page ---

TEST_F(Upload, OfAnotherSurveyDoesNotChangeTheOpenOne)
{
  serve();
  enter_survey(); // incomplete, and not saved
  put_ready();
  window->start_panel->build_survey_model();
  const auto seen = answer_dialogs({ok, ok}, [&] { upload_from_start_page(path_of(ready, "7")); });
  EXPECT_EQ((Titles{succeeded, up_to_date}), titles_of(seen));
  EXPECT_EQ(Names{"7.MAVO-Survey"}, names_in(uploaded));
  EXPECT_FALSE(window->survey.is_uploaded);
  EXPECT_EQ("", window->survey.filename);
  EXPECT_TRUE(window->file_needs_saving());
  EXPECT_FALSE(window->start_panel->upload_button->get_sensitive());
}

TEST_F(Upload, OfTheOpenSurveyFromTheStartPageChecksAndSavesIt)
{
  serve();
  const std::string path = save_ready();
  window->survey_panel2->bottom_time->set_text("");
  const auto seen = answer_next_dialog(ok, [&] { upload_from_start_page(path); });
  EXPECT_EQ("Can't upload yet", seen.title);
  window->survey_panel2->bottom_time->set_text("51");
  answer_dialogs({ok, ok}, [&] { upload_from_start_page(path); });
  EXPECT_NE(std::string::npos, read_file(server->uploads + base_file()).find(">51</bottom_time>"));
}
