// Tests a survey that was opened through a link, by a path outside the store. The program must
// recognize it as a survey of the store.
#include "server/server-test.h"
#include "ui/start-panel.h"
#include "ui/survey-panel2.h"
#include "ui/survey-window.h"

#include <filesystem>

namespace fs = std::filesystem;

namespace {

class OpenedThroughALink : public ServerTest
{
public:
  // Saves a complete survey for upload and opens it through a link to the store.
  void SetUp() override
  {
    ServerTest::SetUp();
    serve();
    enter_complete_survey();
    save_quietly(*window, ready);
    path = window->survey.filename;
    window->hide();

    const std::string link = application_dir.root + "/link";
    fs::create_directory_symlink(my_app->survey_root, link);
    open_window();
    linked_path = link + "/Ready To Upload/" + natural_name + ".MAVO-Survey";
    EXPECT_EQ(RET_SUCCESS, window->do_open(linked_path));
    EXPECT_EQ(linked_path, window->survey.filename);
  }

  // Selects the only survey on the Start page.
  StartPanel& select_on_start_page() const
  {
    StartPanel& panel = *window->start_panel;
    panel.build_survey_model();
    const auto row = panel.store->children()[1].children()[0];
    EXPECT_EQ(path, row.get_value(panel.columns.path));
    panel.survey_tree->set_cursor(panel.store->get_path(row));
    panel.do_survey_line_trigger(panel.store->get_path(row), 1, 0);
    return panel;
  }
  void change() const { window->survey_panel2->bottom_time->set_text("51"); }

  std::string sent() const { return read_file(server->uploads + natural_name + ".MAVO-Survey"); }
  static bool is_changed(const std::string& text)
  {
    return text.find(">51</bottom_time>") != std::string::npos;
  }

  std::string path;
  std::string linked_path;
};

} // namespace

TEST_F(OpenedThroughALink, IsFollowedWhenItIsUnmarked)
{
  press(*select_on_start_page().mark_button);
  EXPECT_EQ(path_of(in_progress, natural_name), window->survey.filename);
  change();
  save_quietly(*window, in_progress);
  EXPECT_EQ(1U, names_in(in_progress).size());
}

TEST_F(OpenedThroughALink, IsSavedBeforeItIsUploadedFromTheStartPage)
{
  change();
  StartPanel& panel = select_on_start_page();
  answer_dialogs({ok, ok}, [&] { press(*panel.upload_button); });
  EXPECT_TRUE(is_changed(sent()));
  EXPECT_TRUE(window->survey.is_uploaded);
  EXPECT_EQ(Names(), names_in(ready));
}

TEST_F(OpenedThroughALink, IsSavedBeforeAllAreUploaded)
{
  change();
  const auto seen =
      answer_dialogs({yes, ok, ok}, [&] { window->on_action_FileUploadAll("FileUploadAll"); });
  EXPECT_NE(std::string::npos, seen[0].text.raw().find(" (current survey)\n"));
  EXPECT_TRUE(is_changed(sent()));
  EXPECT_TRUE(window->survey.is_uploaded);
  EXPECT_EQ(path_of(uploaded, natural_name), window->survey.filename);
}

TEST_F(OpenedThroughALink, IsSavedBeforeAllAreUploadedIfTheQueueHasALinkToIt)
{
  const std::string elsewhere = application_dir.root + "/elsewhere";
  fs::rename(path, elsewhere);
  fs::create_symlink(elsewhere, path);
  EXPECT_EQ(RET_SUCCESS, window->do_open(path));
  change();
  answer_dialogs({yes, ok, ok}, [&] { window->on_action_FileUploadAll("FileUploadAll"); });
  EXPECT_TRUE(is_changed(sent()));
}

TEST_F(OpenedThroughALink, IsMarkedAsTheCurrentOneInLists)
{
  const std::string list = my_app->prettify_survey_list({path}, linked_path);
  EXPECT_NE(std::string::npos, list.find(" (current survey)\n")) << list;
}

TEST_F(OpenedThroughALink, IsLockedWhenItsFileHasBeenUploaded)
{
  EXPECT_EQ(RET_SUCCESS, window->do_upload_file(path));
  EXPECT_TRUE(window->survey.is_uploaded);
  EXPECT_EQ(path_of(uploaded, natural_name), window->survey.filename);
}

TEST_F(OpenedThroughALink, IsFollowedWhenAFailedUploadRemovesItFromTheQueue)
{
  serve({"--upload", "status=500"});
  answer_dialogs({ok, ok, ok}, [&] { window->do_upload_all_ready({path}); });
  EXPECT_EQ(path_of(in_progress, natural_name), window->survey.filename);
}

TEST_F(OpenedThroughALink, IsReplacedByANewSurveyWhenItIsDeleted)
{
  StartPanel& panel = select_on_start_page();
  answer_next_dialog(yes, [&] { press(*panel.delete_button); });
  EXPECT_FALSE(file_exists(path));
  EXPECT_FALSE(window->get_visible());
}
