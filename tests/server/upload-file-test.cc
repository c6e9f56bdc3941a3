#include "server/server-test.h"
#include "store/full-disk.h"
#include "store/other-file-system.h"
#include "store/survey-file.h"
#include "ui/start-panel.h"
#include "ui/survey-panel2.h"
#include "ui/survey-window.h"

#include <giomm/error.h>
#include <sys/stat.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <thread>

namespace fs = std::filesystem;

namespace {

// Tests uploads with failures of the disk.
class UploadFromABadDisk : public ServerTest
{
public:
  // Puts a file at the path of a state's directory.
  void obstruct(const char* directory) const
  {
    fs::remove_all(my_app->survey_root + directory);
    write_file(my_app->survey_root + directory, "in the way");
  }

  // Selects the survey on the Start page and clicks Upload there.
  void upload_from_start_page(const std::string& path, const std::function<void()>& meanwhile)
  {
    StartPanel& panel = *window->start_panel;
    panel.build_survey_model();
    const auto row = panel.store->children()[1].children()[0];
    ASSERT_EQ(path, row.get_value(panel.columns.path));
    panel.survey_tree->set_cursor(panel.store->get_path(row));
    panel.do_survey_line_trigger(panel.store->get_path(row), 1, 0);
    meanwhile();
    press(*panel.upload_button);
  }

  // Runs `upload` with a server that answers the first request late. Runs `change` after the
  // server has received the survey and before it answers.
  void change_during_upload(const std::function<void()>& change,
                            const std::function<void()>& upload)
  {
    const std::string received = serve({"--upload", "delay=1500"}).requests + "1-upload.txt";
    std::thread other_program([&] {
      for (int i = 0; i < 1000 && !file_exists(received); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
      change();
    });
    upload();
    other_program.join();
    EXPECT_TRUE(file_exists(received));
  }

  const std::string survey = SurveyFile().text();
};

// During its lifetime, the directory of uploaded surveys is on another disk.
class UploadedOnAnotherDisk
{
public:
  explicit UploadedOnAnotherDisk(MyApp& app)
      : directory(directory_on_another_file_system(app.survey_root))
  {
    EXPECT_NE("", directory) << "this machine has no second file system to write to";
    const std::string link = app.get_survey_dir(uploaded);
    fs::remove_all(link);
    fs::create_directory_symlink(directory, link);
  }
  ~UploadedOnAnotherDisk() { fs::remove_all(directory); }
  UploadedOnAnotherDisk(const UploadedOnAnotherDisk&) = delete;
  UploadedOnAnotherDisk& operator=(const UploadedOnAnotherDisk&) = delete;

  const std::string directory;
};

} // namespace

TEST_F(UploadFromABadDisk, ThrowsTheLibrarysErrorIfTheFileCannotBeRead)
{
  serve();
  const std::string directory = my_app->get_survey_dir(ready) + "/a";
  const std::string link = my_app->get_survey_dir(ready) + "/b";
  const std::string missing = my_app->get_survey_dir(ready) + "/c";
  fs::create_directory(directory);
  fs::create_symlink("/nowhere", link);
  for (const auto& path : {directory, link, missing})
    expect_no_dialog([&] { EXPECT_THROW(window->do_upload_file(path), Gio::Error) << path; });
  EXPECT_EQ(Names(), server->log());
  EXPECT_EQ((Names{"a", "b"}), names_in(ready));
}

TEST_F(UploadFromABadDisk, ReportsAMissingFileOnceAndContinues)
{
  serve();
  enter_survey();
  const std::string path = put(ready, "7.MAVO-Survey", survey);
  const auto seen =
      answer_next_dialog(ok, [&] { upload_from_start_page(path, [&] { fs::remove(path); }); });
  EXPECT_EQ("Error occurred", seen.title);
  EXPECT_EQ("Something unexpected went wrong: Error opening file " + path +
                ": No such file or directory\nWhat you have entered is still there; please save "
                "your survey.",
            seen.text);
  EXPECT_EQ(Names(), server->log());
  EXPECT_TRUE(window->get_visible());
  EXPECT_TRUE(window->file_needs_saving());
}

TEST_F(UploadFromABadDisk, DoesNotWaitForAPipe)
{
  serve();
  const std::string path = my_app->get_survey_dir(ready) + "/7 <&>";
  ASSERT_EQ(0, mkfifo(path.c_str(), 0600));
  const std::string link = my_app->get_survey_dir(ready) + "/8";
  fs::create_symlink(path, link);
  for (const auto& special : {path, link}) {
    RetCode result = RET_SUCCESS;
    const auto seen = answer_next_dialog(ok, [&] { result = window->do_upload_file(special); });
    EXPECT_EQ(RET_FAILURE, result);
    EXPECT_EQ("Error occurred", seen.title);
    EXPECT_EQ("Failed to read survey file " + special, seen.text);
  }
  const auto seen = answer_dialogs({ok, ok}, [&] { window->do_upload_single(path); });
  EXPECT_EQ((Titles{"Error occurred", up_to_date}), titles_of(seen));
  EXPECT_EQ((Names{"7 <&>", "8"}), names_in(ready));
}

TEST_F(UploadFromABadDisk, RemovesAPipeFromTheQueueAndContinues)
{
  serve();
  ASSERT_EQ(0, mkfifo((my_app->get_survey_dir(ready) + "/1").c_str(), 0600));
  put(ready, "2", survey);
  const auto seen = answer_dialogs({ok, Gtk::RESPONSE_ACCEPT, ok, ok}, [&] {
    window->do_upload_all_ready(my_app->get_ready_survey_list());
  });
  EXPECT_EQ((Titles{"Error occurred", "Continue uploading surveys?", "Upload Partially Successful",
                    up_to_date}),
            titles_of(seen));
  EXPECT_EQ(Names{"1"}, names_in(in_progress));
  EXPECT_EQ(Names{"2"}, names_in(uploaded));
}

TEST_F(UploadFromABadDisk, TreatsAnEmptyFileAsOneThatCannotBeRead)
{
  serve();
  const std::string path = put(ready, "1 <&>", "");
  put(ready, "2", survey);
  testing::internal::CaptureStderr();
  const auto seen = answer_dialogs(
      {ok, yes, ok, ok}, [&] { window->do_upload_all_ready(my_app->get_ready_survey_list()); });
  const std::string errors = testing::internal::GetCapturedStderr();
  EXPECT_EQ((Titles{"Error occurred", "Continue uploading surveys?", "Upload Partially Successful",
                    up_to_date}),
            titles_of(seen));
  EXPECT_EQ("Failed to read survey file " + path, seen[0].text);
  EXPECT_EQ(std::string::npos, errors.find("CRITICAL")) << errors;
  EXPECT_EQ(Names{"1 <&>"}, names_in(in_progress));
  EXPECT_EQ(Names{"2"}, names_in(uploaded));
}

TEST_F(UploadFromABadDisk, EndsABatchAtAFileThatCannotBeReadAndLeavesTheRestReady)
{
  serve();
  put(ready, "1", survey);
  fs::create_directory(my_app->get_survey_dir(ready) + "/2");
  put(ready, "3", survey);
  const auto seen = answer_dialogs({Gtk::RESPONSE_ACCEPT, ok},
                                   [&] { press(*window->start_panel->upload_all_button); });
  EXPECT_EQ((Titles{"Upload all surveys that are ready?", "Error occurred"}), titles_of(seen));
  EXPECT_EQ(0U, seen[1].text.find("Something unexpected went wrong: ")) << seen[1].text;
  EXPECT_EQ(Names{"1"}, names_in(uploaded));
  EXPECT_EQ((Names{"2", "3"}), names_in(ready));
  EXPECT_TRUE(window->get_visible());
}

TEST_F(UploadFromABadDisk, LeavesAFileThatChangedMeanwhileInTheQueue)
{
  const std::string path = put(ready, "7 <&>.MAVO-Survey", survey);
  SeenDialog seen;
  RetCode result = RET_FAILURE;
  change_during_upload(
      [&] { write_file(path, "changed"); },
      [&] { seen = answer_next_dialog(ok, [&] { result = window->do_upload_file(path); }); });
  EXPECT_EQ(RET_SUCCESS, result) << "the server has what was sent";
  EXPECT_EQ("Survey File Changed", seen.title);
  EXPECT_EQ("The survey was uploaded, but another program changed its file meanwhile:\n" + path +
                "\nThe server does not have these changes. The file stays in Ready To Upload.",
            seen.text);
  EXPECT_EQ("changed", read_file(path));
  EXPECT_EQ(Names(), names_in(uploaded));
  EXPECT_EQ(survey, read_file(server->uploads + "7 <&>.MAVO-Survey"));
}

TEST_F(UploadFromABadDisk, DoesNotMoveAChangedFileToInProgressInABatch)
{
  put(ready, "1", survey);
  const std::string path = my_app->get_survey_dir(ready) + "/1";
  std::vector<SeenDialog> seen;
  change_during_upload([&] { write_file(path, survey + "\n"); },
                       [&] {
                         seen = answer_dialogs({ok, ok, ok}, [&] {
                           window->do_upload_all_ready(my_app->get_ready_survey_list());
                         });
                       });
  EXPECT_EQ((Titles{"Survey File Changed", succeeded, up_to_date}), titles_of(seen));
  EXPECT_EQ(Names{"1"}, names_in(ready));
  EXPECT_EQ(Names(), names_in(in_progress));
}

TEST_F(UploadFromABadDisk, SucceedsIfTheFileCannotBeMoved)
{
  serve();
  enter_complete_survey();
  obstruct("/Uploaded");
  const std::string path = path_of(ready, natural_name);
  const auto seen =
      answer_dialogs({ok, ok, ok}, [&] { window->on_action_FileUploadThis("FileUploadThis"); });
  EXPECT_EQ((Titles{"Error occurred", succeeded, up_to_date}), titles_of(seen));
  EXPECT_EQ(0U, seen[0].text.find("Failed to move survey file from " + path + " to " +
                                  my_app->survey_root + "/Uploaded/" + natural_name +
                                  ".MAVO-Survey: (via gioerr) "))
      << seen[0].text;
  EXPECT_EQ(path, window->survey.filename);
  EXPECT_TRUE(window->survey.is_uploaded);
  EXPECT_EQ(window->survey.xml_last_saved.raw(), read_file(path));
  EXPECT_EQ(read_file(path), read_file(server->uploads + natural_name + ".MAVO-Survey"));
}

TEST_F(UploadFromABadDisk, KeepsTheFileIfAnotherDiskIsFull)
{
  serve();
  const UploadedOnAnotherDisk elsewhere(*my_app);
  const std::string path = put(ready, "7.MAVO-Survey", survey);
  std::vector<SeenDialog> seen;
  {
    const FullDisk full(400);
    seen = answer_dialogs({ok, ok, ok}, [&] { window->do_upload_single(path); });
  }
  EXPECT_EQ((Titles{"Error occurred", succeeded, up_to_date}), titles_of(seen));
  EXPECT_EQ(0U, seen[0].text.find("Failed to move survey file from " + path + " to " +
                                  my_app->get_survey_dir(uploaded) + "/7.MAVO-Survey: "))
      << seen[0].text;
  EXPECT_EQ(survey, read_file(path));
  EXPECT_EQ(Names(), names_in(uploaded)) << "no part of a file";
  EXPECT_EQ(survey, read_file(server->uploads + "7.MAVO-Survey"));
}

TEST_F(UploadFromABadDisk, MovesTheFileToAnotherDisk)
{
  serve();
  const UploadedOnAnotherDisk elsewhere(*my_app);
  const std::string path = put(ready, "7.MAVO-Survey", survey);
  expect_no_dialog([&] { EXPECT_EQ(RET_SUCCESS, window->do_upload_file(path)); });
  EXPECT_FALSE(file_exists(path));
  EXPECT_EQ(survey, read_file(my_app->get_survey_dir(uploaded) + "/7.MAVO-Survey"));
}

TEST_F(UploadFromABadDisk, SendsNothingAndKeepsTheOldFileIfTheDiskIsFull)
{
  serve();
  enter_complete_survey();
  save_quietly(*window, in_progress);
  const std::string path = window->survey.filename;
  const std::string saved = read_file(path);
  window->survey_panel2->bottom_time->set_text("51");
  using Action = std::function<void()>;
  const Action actions[] = {[&] { window->on_action_FileUploadThis("FileUploadThis"); },
                            [&] { window->on_upload_button(); }};
  for (const auto& action : actions) {
    SeenDialog seen;
    {
      const FullDisk full(400);
      seen = answer_next_dialog(ok, action);
    }
    EXPECT_EQ("ERROR: Survey NOT Saved!!!", seen.title);
    EXPECT_EQ(0U, seen.text.find("FAILED to save survey to " + path_of(ready, natural_name) + "!"))
        << seen.text;
    EXPECT_EQ(saved, read_file(path));
    EXPECT_EQ(Names(), names_in(ready)) << "no part of a file";
  }
  EXPECT_EQ(Names(), server->log());
  EXPECT_FALSE(window->survey.is_uploaded);
  EXPECT_EQ("51", window->survey_panel2->bottom_time->get_text());
}

TEST_F(UploadFromABadDisk, SendsNothingIfTheQueueCannotBeReached)
{
  serve();
  enter_complete_survey();
  save_quietly(*window, in_progress);
  const std::string path = window->survey.filename;
  const std::string saved = read_file(path);
  obstruct("/Ready To Upload");
  const auto seen = answer_next_dialog(ok, [&] { window->on_upload_button(); });
  EXPECT_EQ("ERROR: Survey NOT Saved!!!", seen.title);
  EXPECT_EQ(saved, read_file(path));
  EXPECT_EQ(Names(), server->log());
}
