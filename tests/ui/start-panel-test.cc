#include "store/saving-test.h"
#include "store/survey-file.h"
#include "support/dialogs.h"
#include "support/main-loop.h"
#include "support/output.h"
#include "ui/member-panel.h"
#include "ui/start-panel.h"
#include "ui/survey-window.h"

#include <giomm/file.h>
#include <giomm/fileenumerator.h>
#include <gtkmm/messagedialog.h>
#include <sys/stat.h>

#include <filesystem>

namespace fs = std::filesystem;

namespace {

const auto in_progress = MyApp::WD_IN_PROGRESS;
const auto ready = MyApp::WD_READY_TO_UPLOAD;
const auto uploaded = MyApp::WD_UPLOADED;

class StartPanelTest : public SavingTest
{
public:
  void SetUp() override
  {
    SavingTest::SetUp();
    panel = window->start_panel;
  }

  // Writes a survey of a member to the store. Returns its path.
  std::string put(MyApp::WhichDir which, const std::string& name,
                  const std::string& member_id = "1234") const
  {
    std::string path = path_of(which, name);
    const auto file = SurveyFile().with("member_id", "<member_id>" + member_id + "</member_id>");
    write_file(path, file.text());
    return path;
  }
  void rebuild() const { panel->build_survey_model(); }
  // Returns the list as a text with each row indented by its depth.
  std::string rows() const
  {
    std::string text;
    panel->store->foreach ([&](const Gtk::TreePath& path, const Gtk::TreeIter& iter) {
      text += std::string(2 * (std::size_t{path.size()} - 1), ' ') +
              iter->get_value(panel->columns.description) + "\n";
      return false;
    });
    return text;
  }
  // Clicks in the middle of a row. Returns whether the panel handles the click.
  bool click(const char* path, unsigned int button = 1) const
  {
    settle();
    Gdk::Rectangle area;
    panel->survey_tree->get_cell_area(Gtk::TreePath(path), *panel->survey_tree->get_column(0),
                                      area);
    GdkEventButton event{};
    event.type = GDK_BUTTON_PRESS;
    event.window = gtk_tree_view_get_bin_window(panel->survey_tree->gobj());
    event.button = button;
    event.x = area.get_x() + area.get_width() / 2.0;
    event.y = area.get_y() + area.get_height() / 2.0;
    return panel->on_survey_clicked(&event);
  }
  bool press_key(unsigned int keyval) const
  {
    GdkEventKey event{};
    event.type = GDK_KEY_PRESS;
    event.keyval = keyval;
    return panel->on_survey_kb_event(&event);
  }
  // Returns the states of the buttons for Edit or View, marking, upload and deletion, as
  // "Edit on, Mark For Upload on hidden, off, on".
  std::string actions() const
  {
    std::string text;
    for (const auto* button : {panel->edit_view_button, panel->mark_button, panel->upload_button,
                               panel->delete_button}) {
      text += text.empty() ? "" : ", ";
      if (button == panel->edit_view_button || button == panel->mark_button)
        text += button->get_label() + " ";
      text += button->get_sensitive() ? "on" : "off";
      text += button->get_visible() ? "" : " hidden";
    }
    return text;
  }

  StartPanel* panel = nullptr;
};

const char* const nothing_selected = "Edit off, Mark For Upload off hidden, off, off";
const char* const description =
    "Northwest: fish and invertebrates - 2021-06-30 at 9 AM - Rosario Wall";

} // namespace

TEST_F(StartPanelTest, ShowsAnEmptyStoreAsThreeHeadings)
{
  EXPECT_EQ("In Progress (none)\nReady To Upload (none)\nUploaded (none)\n", rows());
  EXPECT_EQ(nothing_selected, actions());
  EXPECT_EQ("", panel->lookup_selected_survey(nullptr));
  EXPECT_EQ("Survey", panel->survey_tree->get_column(0)->get_title());
}

TEST_F(StartPanelTest, ShowsSurveysOfOneMemberUnderTheirState)
{
  put(in_progress, "b");
  put(in_progress, "a");
  put(uploaded, "c");
  rebuild();
  const std::string line = std::string("  ") + description + "\n";
  EXPECT_EQ("In Progress\n" + line + line + "Ready To Upload (none)\nUploaded\n" + line, rows());
  EXPECT_TRUE(panel->survey_tree->row_expanded(Gtk::TreePath("0")));
  EXPECT_FALSE(panel->survey_tree->row_expanded(Gtk::TreePath("2")));
  const auto first = panel->store->children()[0].children()[0];
  EXPECT_EQ(path_of(in_progress, "a"), first.get_value(panel->columns.path));
  EXPECT_EQ(in_progress, first.get_value(panel->columns.which_dir));
}

TEST_F(StartPanelTest, GroupsSurveysOfSeveralMembersInThatStateOnly)
{
  put(in_progress, "a", "20");
  put(in_progress, "b", "3");
  put(in_progress, "c", "");
  put(ready, "d", "20");
  rebuild();
  const std::string line = std::string(description) + "\n";
  EXPECT_EQ("In Progress\n  Member ID 0\n    " + line + "  Member ID 3\n    " + line +
                "  Member ID 20\n    " + line + "Ready To Upload\n  " + line + "Uploaded (none)\n",
            rows());
  EXPECT_FALSE(panel->survey_tree->row_expanded(Gtk::TreePath("0:0")));
}

TEST_F(StartPanelTest, ShowsAFileWithoutADescriptionAsCorruptedAndWithoutAMember)
{
  put(in_progress, "good");
  write_file(path_of(in_progress, "note"), "a note");
  // The program reads the member before it finds that the location is unknown.
  write_file(path_of(in_progress, "unknown"),
             SurveyFile().with("subregion", "<subregion>XYZ</subregion>").text());
  fs::create_directory(path_of(in_progress, "directory"));
  fs::create_symlink("/nowhere", path_of(in_progress, "dangling"));
  ASSERT_EQ(0, mkfifo(path_of(in_progress, "pipe").c_str(), 0600));
  rebuild();
  std::string corrupted;
  for (int i = 0; i < 5; ++i)
    corrupted += "    (corrupted survey file)\n";
  EXPECT_EQ("In Progress\n  Member ID -1\n" + corrupted + "  Member ID 1234\n    " + description +
                "\nReady To Upload (none)\nUploaded (none)\n",
            rows());
}

TEST_F(StartPanelTest, TracesAndDescribesOneEntryAfterTheOtherInDirectoryOrder)
{
  for (const char* name : {"b", "e", "a", "d", "c"})
    write_file(path_of(in_progress, name), "no survey");
  const std::string directory = my_app->get_survey_dir(in_progress);
  std::string expected = "selected_dir: " + directory + "\n";
  const auto entries = Gio::File::create_for_path(directory)->enumerate_children("standard::name");
  while (const auto entry = entries->next_file()) {
    const std::string path = directory + "/" + entry->get_name();
    expected.append("child filename = ").append(path).append("\n");
    expected += output_of([&] { my_app->get_survey_description(path, nullptr); });
  }
  const std::string said = output_of(1, [&] { rebuild(); });
  EXPECT_EQ(0U, said.find(expected + "selected_dir: ")) << said << "\nis not\n" << expected;
  const auto row = [&](unsigned number) {
    return panel->store->children()[0].children()[number].get_value(panel->columns.path);
  };
  EXPECT_EQ(path_of(in_progress, "a"), row(0)) << "the rows are sorted";
  EXPECT_EQ(path_of(in_progress, "e"), row(4));
}

TEST_F(StartPanelTest, ReportsAnUnreadableDirectoryAndShowsTheOthers)
{
  put(ready, "a");
  fs::remove_all(my_app->survey_root + "/In Progress");
  write_file(my_app->survey_root + "/In Progress", "a file in its place");
  EXPECT_NE(std::string::npos, output_of(0, [&] { rebuild(); }).find("File scan: "));
  EXPECT_EQ(std::string("In Progress (cannot be read)\nReady To Upload\n  ") + description +
                "\nUploaded (none)\n",
            rows());
}

TEST_F(StartPanelTest, SetsTheButtonsByTheStateOfTheSelectedSurvey)
{
  put(in_progress, "a");
  put(ready, "b");
  put(uploaded, "c");
  rebuild();
  panel->survey_tree->expand_all();
  const struct {
    const char* path;
    const char* expected;
  } cases[] = {
      {"0:0", "Edit on, Mark For Upload on hidden, off, on"},
      {"1:0", "Edit on, Un-Mark For Upload on, on, on"},
      {"2:0", "View on, Mark For Upload off hidden, off, on"},
      {"0", nothing_selected},
  };
  for (const auto& c : cases) {
    EXPECT_TRUE(click(c.path, 3)) << c.path;
    EXPECT_EQ(c.expected, actions()) << c.path;
  }
}

TEST_F(StartPanelTest, TogglesAHeadingByTheFirstButtonOnly)
{
  put(in_progress, "a");
  rebuild();
  EXPECT_TRUE(click("0", 3));
  EXPECT_TRUE(panel->survey_tree->row_expanded(Gtk::TreePath("0")));
  EXPECT_TRUE(click("0", 1));
  EXPECT_FALSE(panel->survey_tree->row_expanded(Gtk::TreePath("0")));
  EXPECT_TRUE(click("0", 1));
  EXPECT_TRUE(panel->survey_tree->row_expanded(Gtk::TreePath("0")));
}

TEST_F(StartPanelTest, IgnoresClicksOutsideOfRows)
{
  put(in_progress, "a");
  rebuild();
  GdkEventButton event{};
  event.window = gtk_tree_view_get_bin_window(panel->survey_tree->gobj());
  event.button = 1;
  event.type = GDK_2BUTTON_PRESS;
  EXPECT_FALSE(panel->on_survey_clicked(&event));
  event.type = GDK_BUTTON_PRESS;
  event.button = 2;
  EXPECT_FALSE(panel->on_survey_clicked(&event));
  event.button = 1;
  event.y = 4000;
  EXPECT_FALSE(panel->on_survey_clicked(&event));
  event.window = nullptr;
  const std::string said = output_of(0, [&] { EXPECT_FALSE(panel->on_survey_clicked(&event)); });
  EXPECT_EQ(0U, said.find("hmm, survey click in some other window? "));
}

TEST_F(StartPanelTest, TreatsOnlyReturnAndRightAsASelection)
{
  put(ready, "a");
  rebuild();
  panel->survey_tree->set_cursor(Gtk::TreePath("1:0"));
  EXPECT_FALSE(press_key(GDK_KEY_Down));
  EXPECT_EQ(nothing_selected, actions());
  EXPECT_EQ("ignoring key 65364\n", output_of(40, [&] { press_key(GDK_KEY_Down); }));
  for (const guint key : {guint{GDK_KEY_Return}, guint{GDK_KEY_Right}}) {
    panel->deselect_survey();
    EXPECT_TRUE(press_key(key));
    EXPECT_EQ("Edit on, Un-Mark For Upload on, on, on", actions());
  }
  panel->survey_tree->set_cursor(Gtk::TreePath("1"));
  EXPECT_TRUE(press_key(GDK_KEY_Return));
  EXPECT_EQ(nothing_selected, actions());
  EXPECT_TRUE(panel->survey_tree->row_expanded(Gtk::TreePath("1")));
}

TEST_F(StartPanelTest, TreatsTheMenuKeyAsASelection)
{
  const std::string path = put(in_progress, "a");
  rebuild();
  panel->survey_tree->set_cursor(Gtk::TreePath("0:0"));
  EXPECT_EQ("survey selected: " + path + "\n",
            output_of(30, [&] { EXPECT_TRUE(panel->on_survey_kb_activated()); }));
  EXPECT_EQ("Edit on, Mark For Upload on hidden, off, on", actions());
}

TEST_F(StartPanelTest, SearchesDescriptionsAsTheUserTypes)
{
  EXPECT_EQ(panel->columns.description.index(), panel->survey_tree->get_search_column());
  rebuild();
  EXPECT_EQ(panel->columns.description.index(), panel->survey_tree->get_search_column());
}

TEST_F(StartPanelTest, LooksUpTheRowUnderTheCursor)
{
  const std::string path = put(uploaded, "a");
  rebuild();
  panel->survey_tree->expand_all();
  MyApp::WhichDir which = MyApp::WD_ROOT;
  panel->survey_tree->set_cursor(Gtk::TreePath("2"));
  EXPECT_EQ("", panel->lookup_selected_survey(&which));
  EXPECT_EQ(MyApp::WD_NOT_A_SURVEY, which);
  panel->survey_tree->set_cursor(Gtk::TreePath("2:0"));
  EXPECT_EQ(path, panel->lookup_selected_survey(&which));
  EXPECT_EQ(uploaded, which);
}

TEST_F(StartPanelTest, OpensTheSelectedSurveyInPlaceOfItsWindow)
{
  const std::string path = put(in_progress, "a");
  rebuild();
  panel->survey_tree->set_cursor(Gtk::TreePath("0:0"));
  window->on_next_button(); // opens the selected survey
  ASSERT_EQ(1U, visible_windows().size());
  EXPECT_NE(window, visible_windows().front());
  EXPECT_EQ(path, visible_windows().front()->survey.filename);
}

TEST_F(StartPanelTest, KeepsItsWindowIfTheSurveyCannotBeOpened)
{
  write_file(path_of(in_progress, "note"), "a note");
  rebuild();
  panel->survey_tree->set_cursor(Gtk::TreePath("0:0"));
  answer_next_dialog(Gtk::RESPONSE_OK, [&] { panel->on_edit_view_button(); });
  ASSERT_EQ(1U, visible_windows().size());
  EXPECT_EQ(window, visible_windows().front());
}

TEST_F(StartPanelTest, AsksBeforeItClosesAChangedSurvey)
{
  put(in_progress, "a");
  enter_survey();
  rebuild();
  panel->survey_tree->set_cursor(Gtk::TreePath("0:0"));
  const SeenDialog seen =
      answer_next_dialog(Gtk::RESPONSE_CANCEL, [&] { panel->on_edit_view_button(); });
  EXPECT_NE(std::string::npos, seen.text.raw().find("closing it to open the selected survey"));
  EXPECT_TRUE(window->get_visible());
}

TEST_F(StartPanelTest, UnMarksASurveyAndUpdatesThePathOfTheOpenOne)
{
  enter_survey();
  save_quietly(*window, ready);
  panel->survey_tree->set_cursor(Gtk::TreePath("1:0"));
  panel->on_mark_button();
  EXPECT_EQ(path_of(in_progress, natural_name), window->survey.filename);
  EXPECT_TRUE(file_exists(path_of(in_progress, natural_name)));
  EXPECT_TRUE(names_in(ready).empty());
  EXPECT_EQ(nothing_selected, actions());
  save_quietly(*window, in_progress);
  EXPECT_EQ(1U, names_in(in_progress).size());
}

TEST_F(StartPanelTest, UnMarksASurveyWithoutOverwritingAnotherWithThatName)
{
  enter_survey();
  save_quietly(*window, ready);
  const std::string marked = read_file(window->survey.filename);
  const std::string other = put(in_progress, natural_name, "7");
  const std::string others_text = read_file(other);
  rebuild();
  panel->survey_tree->set_cursor(Gtk::TreePath("1:0"));
  expect_no_dialog([&] { panel->on_mark_button(); });
  EXPECT_EQ(others_text, read_file(other));
  EXPECT_EQ(path_of(in_progress, natural_name + "-1"), window->survey.filename);
  EXPECT_EQ(marked, read_file(window->survey.filename));
  EXPECT_TRUE(names_in(ready).empty());

  window->survey.abundances = {{10, 3}};
  save_quietly(*window, in_progress);
  EXPECT_EQ(path_of(in_progress, natural_name + "-1"), window->survey.filename);
  EXPECT_EQ(2U, names_in(in_progress).size()) << "no copy is left behind";
}

TEST_F(StartPanelTest, CannotMarkASurveyForUpload)
{
  const std::string path = put(in_progress, "a");
  rebuild();
  panel->survey_tree->set_cursor(Gtk::TreePath("0:0"));
  EXPECT_EQ("un-mark-for-upload is NYI\n", output_of(0, [&] { panel->on_mark_button(); }));
  EXPECT_TRUE(file_exists(path));
}

TEST_F(StartPanelTest, DeletesAnotherSurveyAndExpandsTheUploadedOnes)
{
  const std::string path = put(in_progress, "a");
  put(uploaded, "b");
  rebuild();
  panel->survey_tree->set_cursor(Gtk::TreePath("0:0"));
  answer_next_dialog(Gtk::RESPONSE_ACCEPT, [&] { panel->on_delete_button(); });
  EXPECT_FALSE(file_exists(path));
  EXPECT_EQ(nothing_selected, actions());
  EXPECT_TRUE(panel->survey_tree->row_expanded(Gtk::TreePath("2")));
  EXPECT_TRUE(window->get_visible());
}

TEST_F(StartPanelTest, StartsANewSurveyAfterDeletingTheOpenOne)
{
  enter_survey();
  save_quietly(*window, in_progress);
  panel->survey_tree->set_cursor(Gtk::TreePath("0:0"));
  answer_next_dialog(Gtk::RESPONSE_ACCEPT, [&] { panel->on_delete_button(); });
  ASSERT_EQ(1U, visible_windows().size());
  EXPECT_NE(window, visible_windows().front());
  EXPECT_EQ("", visible_windows().front()->survey.filename);
  EXPECT_EQ("1234", visible_windows().front()->member_panel->get_member_id());
}

TEST_F(StartPanelTest, DoesNothingWithoutASelection)
{
  expect_no_dialog([&] {
    panel->on_edit_view_button();
    panel->on_mark_button();
    panel->on_upload_button();
    panel->on_delete_button();
  });
  EXPECT_TRUE(window->get_visible());
}

TEST_F(StartPanelTest, ListsTwoThousandSurveys)
{
  for (int i = 0; i < 2000; ++i)
    put(i % 2 == 0 ? in_progress : uploaded, std::to_string(i), std::to_string(i % 7));
  rebuild();
  std::size_t surveys = 0;
  panel->store->foreach_iter([&](const Gtk::TreeIter& iter) {
    surveys += iter->get_value(panel->columns.path).empty() ? 0 : 1;
    return false;
  });
  EXPECT_EQ(2000U, surveys);
}
