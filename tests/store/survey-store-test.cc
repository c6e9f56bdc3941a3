#include "core/my-app.h"
#include "core/report.h"
#include "store/other-file-system.h"
#include "store/survey-store.h"
#include "support/application.h"
#include "support/data-set.h"
#include "support/dialogs.h"
#include "support/output.h"

#include <glib.h>
#include <glibmm/miscutils.h>
#include <gtest/gtest.h>
#include <gtkmm/application.h>
#include <gtkmm/dialog.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

namespace {

// The store of an application object with the minimal data set, without a window.
class SurveyStore : public testing::Test
{
public:
  SurveyStore() { app.survey_root = application_dir.root + "/store"; }

  std::string directory(MyApp::WhichDir which) { return app.get_survey_dir(which); }

  // Writes a file to the directory of a state. By default it is a complete survey.
  std::string add(MyApp::WhichDir which, const std::string& name,
                  const std::string& text = survey())
  {
    std::string path = directory(which) + "/" + name;
    write_file(path, text);
    return path;
  }

  // Returns a document with these children of its survey element.
  static std::string with_children(const std::string& children)
  {
    return "<MAVO-Survey version='1.0'><survey>" + children + "</survey></MAVO-Survey>";
  }

  static std::string survey()
  {
    return with_children("<member_id>1234</member_id><last_name>Smith</last_name>"
                         "<subregion>PNW</subregion><survey_subtype>1</survey_subtype>"
                         "<year>2021</year><month>06</month><mday>30</mday>"
                         "<dive_start>9</dive_start><zonecode>31020003</zonecode>");
  }

  ApplicationDir application_dir;
  MyApp& app = kept_program();

private:
  // Returns the application object, which is never freed, like its tables.
  static MyApp& kept_program()
  {
    static auto& kept = *new MyApp(test_application());
    return kept;
  }
};

} // namespace

TEST_F(SurveyStore, HasADirectoryForEachState)
{
  const struct {
    MyApp::WhichDir which;
    const char* suffix;
  } cases[] = {
      {MyApp::WD_IN_PROGRESS, "/In Progress"}, {MyApp::WD_READY_TO_UPLOAD, "/Ready To Upload"},
      {MyApp::WD_UPLOADED, "/Uploaded"},       {MyApp::WD_ROOT, ""},
      {MyApp::WD_NOT_A_SURVEY, "/OOPS"},       {static_cast<MyApp::WhichDir>(0), "/OOPS"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(app.survey_root + c.suffix, app.get_survey_dir(c.which));
    EXPECT_TRUE(fs::is_directory(app.survey_root + c.suffix)) << c.suffix;
  }
}

TEST_F(SurveyStore, CreatesADirectoryWithItsParentsAndAgainIfTheUserRemovesIt)
{
  ASSERT_FALSE(file_exists(app.survey_root));
  EXPECT_TRUE(fs::is_directory(directory(MyApp::WD_UPLOADED)));
  EXPECT_FALSE(file_exists(app.survey_root + "/In Progress")) << "only the requested directory";
  fs::remove_all(app.survey_root);
  EXPECT_TRUE(fs::is_directory(directory(MyApp::WD_UPLOADED)));
}

TEST_F(SurveyStore, DoesNotReportADirectoryThatCannotBeCreated)
{
  write_file(app.survey_root, "in the way");
  expect_no_dialog(
      [&] { EXPECT_EQ(app.survey_root + "/In Progress", directory(MyApp::WD_IN_PROGRESS)); });
  EXPECT_EQ("in the way", read_file(app.survey_root));
}

TEST_F(SurveyStore, TracesTheDirectoryAtLevelOne)
{
  const TraceLevel level(1);
  EXPECT_EQ("selected_dir: " + app.survey_root + "/Uploaded\n",
            output_of([&] { directory(MyApp::WD_UPLOADED); }));
}

// This is a single test, because the library caches the documents directory.
TEST_F(SurveyStore, IsInTheDocumentsDirectoryOrInTheHomeDirectory)
{
  const std::string home = Glib::get_home_dir();
  if (Glib::get_user_special_dir(Glib::USER_DIRECTORY_DOCUMENTS).empty()) {
    app.survey_root.clear();
    EXPECT_EQ(home + "/Documents/MAVO-Survey", directory(MyApp::WD_ROOT));
    EXPECT_TRUE(fs::is_directory(home + "/Documents/MAVO-Survey"));
  } else {
    ADD_FAILURE() << "the test's home has a documents directory from the start";
  }

  write_file(Glib::get_user_config_dir() + "/user-dirs.dirs",
             "XDG_DOCUMENTS_DIR=\"$HOME/My Papers\"\n");
  g_reload_user_special_dirs_cache();
  EXPECT_EQ(home + "/Documents/MAVO-Survey", directory(MyApp::WD_ROOT)) << "looked up once";
  app.survey_root.clear();
  EXPECT_EQ(home + "/My Papers/MAVO-Survey", directory(MyApp::WD_ROOT));
  EXPECT_TRUE(fs::is_directory(home + "/My Papers/MAVO-Survey"));
}

TEST_F(SurveyStore, ListsAllThatIsReadyInByteOrder)
{
  EXPECT_TRUE(app.get_ready_survey_list().empty());
  std::vector<std::string> expected;
  for (const char* name : {"10.MAVO-Survey", "2.MAVO-Survey", "B", "a.txt", "é"})
    expected.push_back(add(MyApp::WD_READY_TO_UPLOAD, name, "anything"));
  add(MyApp::WD_IN_PROGRESS, "elsewhere.MAVO-Survey");
  EXPECT_EQ(expected, app.get_ready_survey_list());

  fs::remove_all(app.survey_root);
  EXPECT_TRUE(app.get_ready_survey_list().empty());
}

TEST_F(SurveyStore, TracesEachReadyFileAtLevelOne)
{
  const std::string path = add(MyApp::WD_READY_TO_UPLOAD, "a");
  const TraceLevel level(1);
  EXPECT_EQ("selected_dir: " + app.survey_root + "/Ready To Upload\n" + "child filename = " + path +
                "\n",
            output_of([&] { app.get_ready_survey_list(); }));
}

TEST_F(SurveyStore, DescribesASavedSurveyInOneLine)
{
  const std::string path = add(MyApp::WD_IN_PROGRESS, "a");
  EXPECT_EQ("Member 1234 - Northwest: abundance - 2021-06-30 at 9 AM - Rosario Wall",
            app.get_survey_description(path, nullptr));
  int member_id = 7;
  EXPECT_EQ("Northwest: abundance - 2021-06-30 at 9 AM - Rosario Wall",
            app.get_survey_description(path, &member_id));
  EXPECT_EQ(1234, member_id);
}

TEST_F(SurveyStore, DescribesADocumentByItsElements)
{
  const struct {
    const char* why;
    const char* children;
    const char* expected;
    int member_id;
  } cases[] = {
      {"no type chosen", "<subregion>PNW</subregion><survey_subtype>-1</survey_subtype>",
       "Northwest - 0000-00-00", -1},
      {"no date", "<subregion>PNW</subregion><survey_subtype>1</survey_subtype><year/>",
       "Northwest: abundance", -1},
      {"empty member", "<member_id/><subregion>PNW</subregion><survey_subtype>1</survey_subtype>",
       "Northwest: abundance - 0000-00-00", 0},
      {"member of letters",
       "<member_id>x</member_id><subregion>PNW</subregion><survey_subtype>1</survey_subtype>",
       "Member x - Northwest: abundance - 0000-00-00", 0},
      {"other elements are ignored",
       "<!-- --><what/><subregion>PNW</subregion> text <survey_subtype>1</survey_subtype>",
       "Northwest: abundance - 0000-00-00", -1},
      {"start and zone unknown",
       "<subregion>PNW</subregion><survey_subtype>1</survey_subtype><dive_start>-1</dive_start>"
       "<zonecode>9</zonecode>",
       "Northwest: abundance - 0000-00-00", -1},
  };
  for (const auto& c : cases) {
    const std::string path = add(MyApp::WD_IN_PROGRESS, "a", with_children(c.children));
    EXPECT_EQ(c.expected, app.get_survey_description(path, nullptr)) << c.why;
    int member_id = 7;
    app.get_survey_description(path, &member_id);
    EXPECT_EQ(c.member_id, member_id) << c.why;
  }
}

TEST_F(SurveyStore, ReportsWhyAFileHasNoDescription)
{
  const struct {
    std::string text;
    const char* reason;
    int member_id;
  } cases[] = {
      {with_children("<member_id>5</member_id><subregion>XXX</subregion>"), "Bad subregion", 5},
      {with_children("<subregion>PNW</subregion>"), "Bad subtype 0", -1},
      {with_children("<subregion>PNW</subregion><survey_subtype>99</survey_subtype>"),
       "Bad subtype 99", -1},
      {"<other/>", "Not a valid saved MAVO Survey", -1},
      {"<MAVO-Survey version='2.0'><survey/></MAVO-Survey>",
       "Valid saved MAVO Survey, but you need a newer version of this program to open it", -1},
  };
  for (const auto& c : cases) {
    const std::string path = add(MyApp::WD_IN_PROGRESS, "a", c.text);
    int member_id = 7;
    const std::string said =
        output_of([&] { EXPECT_EQ("", app.get_survey_description(path, &member_id)); });
    EXPECT_EQ("File scan: " + path + ": " + c.reason + "\n", said);
    EXPECT_EQ(c.member_id, member_id) << c.reason;
  }
}

TEST_F(SurveyStore, ReportsACorruptFileOnce)
{
  for (const char* text : {"<MAVO-Survey version='1.0'><survey>", "", "plain words"}) {
    const std::string path = add(MyApp::WD_IN_PROGRESS, "a", text);
    int member_id = 7;
    const std::string said =
        output_of([&] { EXPECT_EQ("", app.get_survey_description(path, &member_id)); });
    EXPECT_EQ(0U, said.find("File scan: " + path + ": ")) << said;
    EXPECT_EQ(0U, said.rfind("File scan: "));
    EXPECT_EQ(-1, member_id);
  }
}

TEST_F(SurveyStore, ReportsAFileThatCannotBeRead)
{
  // A regular file whose reading fails for every user.
  const std::string said =
      output_of([&] { EXPECT_EQ("", app.get_survey_description("/proc/self/mem", nullptr)); });
  EXPECT_EQ(0U, said.find("File scan: /proc/self/mem: ")) << said;
}

TEST_F(SurveyStore, DescribesOnlyRegularFilesAndDoesNotReportOthers)
{
  const std::string dangling = directory(MyApp::WD_IN_PROGRESS) + "/dangling";
  fs::create_symlink("/nowhere", dangling);
  const std::string pipe = directory(MyApp::WD_IN_PROGRESS) + "/pipe";
  ASSERT_EQ(0, mkfifo(pipe.c_str(), 0600));
  for (const auto& path : {app.survey_root, dangling, pipe, std::string("/dev/null"),
                           app.survey_root + "/missing", std::string()}) {
    int member_id = 7;
    EXPECT_EQ("", output_of([&] { EXPECT_EQ("", app.get_survey_description(path, &member_id)); }))
        << path;
    EXPECT_EQ(-1, member_id) << path;
  }
}

TEST_F(SurveyStore, FollowsALinkToASurvey)
{
  const std::string link = directory(MyApp::WD_READY_TO_UPLOAD) + "/link";
  fs::create_symlink(add(MyApp::WD_IN_PROGRESS, "a"), link);
  EXPECT_NE("", app.get_survey_description(link, nullptr));
}

TEST_F(SurveyStore, PrettifiesAListLineByLineAsPlainText)
{
  const std::string good = add(MyApp::WD_READY_TO_UPLOAD, "a");
  const std::string odd = add(MyApp::WD_READY_TO_UPLOAD, "b",
                              with_children("<member_id>1 &lt; 2</member_id>"
                                            "<subregion>FLA</subregion>"
                                            "<survey_subtype>-1</survey_subtype>"));
  const std::string bad = add(MyApp::WD_READY_TO_UPLOAD, "c & d", "no survey");
  std::string pretty;
  output_of([&] { pretty = app.prettify_survey_list({bad, good, odd}, good); });
  EXPECT_EQ(bad + "\n" +
                "Member 1234 - Northwest: abundance - 2021-06-30 at 9 AM - Rosario Wall "
                "(current survey)\n"
                "Member 1 < 2 - Florida & Gulf - 0000-00-00\n",
            pretty);
}

TEST_F(SurveyStore, PrettifiesAnEmptyListToAnEmptyText)
{
  EXPECT_EQ("", app.prettify_survey_list({}, ""));
}

TEST_F(SurveyStore, MovesASurveyToAnotherState)
{
  const std::string from = add(MyApp::WD_READY_TO_UPLOAD, "a b.MAVO-Survey");
  std::string path = from;
  EXPECT_EQ("", output_of([&] {
              EXPECT_EQ(RET_SUCCESS, app.move_survey_to(MyApp::WD_IN_PROGRESS, path));
            }));
  EXPECT_EQ(app.survey_root + "/In Progress/a b.MAVO-Survey", path);
  EXPECT_EQ(survey(), read_file(path));
  EXPECT_FALSE(file_exists(from));
}

TEST_F(SurveyStore, DoesNotMoveASurveyThatIsAlreadyThere)
{
  const std::string from = add(MyApp::WD_UPLOADED, "a");
  const auto written = fs::last_write_time(from);
  std::string path = from;
  EXPECT_EQ(RET_SUCCESS, app.move_survey_to(MyApp::WD_UPLOADED, path));
  EXPECT_EQ(from, path);
  EXPECT_EQ(written, fs::last_write_time(from));

  std::string missing = app.survey_root + "/Uploaded/missing";
  EXPECT_EQ(RET_SUCCESS, app.move_survey_to(MyApp::WD_UPLOADED, missing)) << "the file is not read";
}

TEST_F(SurveyStore, ReplacesAFileOfThatNameWhenMoving)
{
  add(MyApp::WD_UPLOADED, "a", "older");
  std::string path = add(MyApp::WD_READY_TO_UPLOAD, "a");
  EXPECT_EQ(RET_SUCCESS, app.move_survey_to(MyApp::WD_UPLOADED, path));
  EXPECT_EQ(survey(), read_file(path));
}

TEST_F(SurveyStore, MovesToTheNextFreeNumberIfTheNameExists)
{
  const std::string others = "1234-PNW-20210630-0900";
  const struct {
    MyApp::WhichDir which;
    std::string name;
    std::vector<std::string> taken;
    std::string expected;
  } cases[] = {
      {MyApp::WD_IN_PROGRESS, others, {others}, others + "-1"},
      {MyApp::WD_READY_TO_UPLOAD, others, {others}, others + "-1"},
      {MyApp::WD_IN_PROGRESS, others, {others, others + "-1", others + "-2"}, others + "-3"},
      {MyApp::WD_IN_PROGRESS, others, {others + "-1"}, others},
      {MyApp::WD_IN_PROGRESS, others + "-1", {others + "-2"}, others + "-1"},
      {MyApp::WD_IN_PROGRESS, others + "-1", {others, others + "-1"}, others + "-2"},
      {MyApp::WD_IN_PROGRESS, others + "-1", {others + "-1"}, others},
      {MyApp::WD_IN_PROGRESS, others + "-31020003", {others + "-31020003"}, others + "-31020003-1"},
  };
  for (const auto& c : cases) {
    fs::remove_all(app.survey_root);
    std::vector<std::string> in_the_way;
    for (const auto& name : c.taken)
      in_the_way.push_back(add(c.which, name + ".MAVO-Survey", "other"));
    std::string path = add(MyApp::WD_UPLOADED, c.name + ".MAVO-Survey");
    const std::string from = path;
    EXPECT_EQ("", output_of([&] { EXPECT_EQ(RET_SUCCESS, app.move_survey_to(c.which, path)); }));
    EXPECT_EQ(directory(c.which) + "/" + c.expected + ".MAVO-Survey", path);
    EXPECT_EQ(survey(), read_file(path));
    EXPECT_FALSE(file_exists(from));
    for (const auto& other : in_the_way)
      EXPECT_EQ("other", read_file(other)) << other;
  }
}

TEST_F(SurveyStore, NumbersAnyNameThatExists)
{
  for (const std::string& name : {std::string("a"), std::string(".a"), std::string("a.b.txt")}) {
    add(MyApp::WD_IN_PROGRESS, name, "other");
    std::string path = add(MyApp::WD_READY_TO_UPLOAD, name);
    EXPECT_EQ(RET_SUCCESS, app.move_survey_to(MyApp::WD_IN_PROGRESS, path));
    EXPECT_EQ("other", read_file(directory(MyApp::WD_IN_PROGRESS) + "/" + name));
    EXPECT_EQ(survey(), read_file(path)) << path;
  }
  EXPECT_TRUE(file_exists(directory(MyApp::WD_IN_PROGRESS) + "/a-1"));
  EXPECT_TRUE(file_exists(directory(MyApp::WD_IN_PROGRESS) + "/.a-1"));
  EXPECT_TRUE(file_exists(directory(MyApp::WD_IN_PROGRESS) + "/a.b-1.txt"));
}

TEST_F(SurveyStore, DoesNotMoveASurveyIfBothStatesAreTheSameDirectory)
{
  const std::string from = add(MyApp::WD_READY_TO_UPLOAD, "a");
  fs::create_directory_symlink(directory(MyApp::WD_READY_TO_UPLOAD),
                               app.survey_root + "/In Progress");
  std::string path = from;
  EXPECT_EQ(RET_SUCCESS, app.move_survey_to(MyApp::WD_IN_PROGRESS, path));
  EXPECT_EQ(app.survey_root + "/In Progress/a", path);
  EXPECT_EQ(survey(), read_file(from));
}

TEST_F(SurveyStore, CopiesToTheNextFreeNumberIfTheNameExists)
{
  const std::string other = directory_on_another_file_system(application_dir.root);
  ASSERT_NE("", other) << "this machine has no second file system that the test can write to";
  std::string path = other + "/a.MAVO-Survey";
  write_file(path, survey());
  add(MyApp::WD_IN_PROGRESS, "a.MAVO-Survey", "other");
  add(MyApp::WD_IN_PROGRESS, "a-1.MAVO-Survey", "other");
  EXPECT_EQ(RET_SUCCESS, app.move_survey_to(MyApp::WD_IN_PROGRESS, path));
  EXPECT_EQ(directory(MyApp::WD_IN_PROGRESS) + "/a-2.MAVO-Survey", path);
  EXPECT_EQ(survey(), read_file(path));
  EXPECT_EQ("other", read_file(directory(MyApp::WD_IN_PROGRESS) + "/a.MAVO-Survey"));
  EXPECT_EQ("other", read_file(directory(MyApp::WD_IN_PROGRESS) + "/a-1.MAVO-Survey"));
  EXPECT_FALSE(file_exists(other + "/a.MAVO-Survey"));
  fs::remove_all(other);
}

TEST_F(SurveyStore, CopiesNothingButRegularFilesToAnotherFileSystem)
{
  const std::string other = directory_on_another_file_system(application_dir.root);
  ASSERT_NE("", other) << "this machine has no second file system that the test can write to";
  ASSERT_EQ(0, mkfifo((other + "/pipe").c_str(), 0600));
  fs::create_symlink("/dev/zero", other + "/zeros");
  for (const char* name : {"/pipe", "/zeros"}) {
    std::string path = other + name;
    RetCode result = RET_SUCCESS;
    const SeenDialog seen = answer_next_dialog(
        Gtk::RESPONSE_OK, [&] { result = app.move_survey_to(MyApp::WD_IN_PROGRESS, path); });
    EXPECT_EQ(RET_FAILURE, result);
    EXPECT_EQ(other + name, path);
    EXPECT_EQ("Failed to move survey file from " + path + " to " + app.survey_root +
                  "/In Progress" + name + ": (via ustr) Not a regular file",
              seen.text);
    EXPECT_EQ(fs::file_type::not_found,
              fs::symlink_status(directory(MyApp::WD_IN_PROGRESS) + name).type());
  }
  fs::remove_all(other);
}

TEST_F(SurveyStore, CopiesToAnotherFileSystemAndRemovesTheSource)
{
  const std::string other = directory_on_another_file_system(application_dir.root);
  ASSERT_NE("", other) << "this machine has no second file system that the test can write to";
  const std::string from = other + "/a.MAVO-Survey";
  write_file(from, survey());
  std::string path = from;
  const std::string to = directory(MyApp::WD_UPLOADED) + "/a.MAVO-Survey";

  const TraceLevel level(1);
  const std::string said =
      output_of([&] { EXPECT_EQ(RET_SUCCESS, app.move_survey_to(MyApp::WD_UPLOADED, path)); });

  const std::string size = std::to_string(survey().size());
  EXPECT_EQ("selected_dir: " + app.survey_root + "/Uploaded\n" + "rename() of " + from + " to " +
                to + " failed: 18 = Invalid cross-device link\n" + "read " + size + " bytes from " +
                from + "; about to write them to " + to + "\n" + "wrote " + size + " bytes to " +
                to + "; about to unlink " + from + "\n",
            said);
  EXPECT_EQ(to, path);
  EXPECT_EQ(survey(), read_file(to));
  EXPECT_FALSE(file_exists(from));
  fs::remove_all(other);
}

TEST_F(SurveyStore, TreatsACopyAsMovedIfTheSourceCannotBeRemoved)
{
  // A file of another file system that can be read but never removed.
  std::string path = "/proc/self/comm";
  const std::string contents = read_file(path);
  const std::string said =
      output_of([&] { EXPECT_EQ(RET_SUCCESS, app.move_survey_to(MyApp::WD_UPLOADED, path)); });
  EXPECT_EQ("unlink of /proc/self/comm failed: 1 = Operation not permitted\n", said);
  EXPECT_EQ(app.survey_root + "/Uploaded/comm", path);
  EXPECT_EQ(contents, read_file(path));
}

TEST_F(SurveyStore, KeepsASourceThatCouldOnlyBeCopiedInPart)
{
  const std::string other = directory_on_another_file_system(application_dir.root);
  ASSERT_NE("", other) << "this machine has no second file system that the test can write to";
  const std::string from = other + "/a";
  const std::string contents("text\0and more", 13);
  write_file(from, contents);
  std::string path = from;
  const std::string said =
      output_of([&] { EXPECT_EQ(RET_SUCCESS, app.move_survey_to(MyApp::WD_UPLOADED, path)); });
  EXPECT_EQ(from + " stays, as only its first 4 of 13 bytes could be copied\n", said);
  EXPECT_EQ("text", read_file(app.survey_root + "/Uploaded/a"));
  EXPECT_EQ(contents, read_file(from));
  fs::remove_all(other);
}

TEST_F(SurveyStore, ReportsAMoveThatFailedBecauseTheFileIsMissing)
{
  const std::string from = app.survey_root + "/Ready To Upload/R&D <1>";
  std::string path = from;
  RetCode result = RET_SUCCESS;
  const SeenDialog seen = answer_next_dialog(
      Gtk::RESPONSE_OK, [&] { result = app.move_survey_to(MyApp::WD_UPLOADED, path); });
  EXPECT_EQ(RET_FAILURE, result);
  EXPECT_EQ(from, path);
  EXPECT_EQ("Error occurred", seen.title);
  EXPECT_EQ("Failed to move survey file from " + from + " to " + app.survey_root +
                "/Uploaded/R&D <1>: (via gioerr) Error opening file " + from +
                ": No such file or directory",
            seen.text);
}

TEST_F(SurveyStore, KeepsTheFileIfAMoveFailsBecauseTheDirectoryIsMissing)
{
  const std::string from = add(MyApp::WD_READY_TO_UPLOAD, "a");
  write_file(app.survey_root + "/Uploaded", "in the way");
  std::string path = from;
  RetCode result = RET_SUCCESS;
  const SeenDialog seen = answer_next_dialog(
      Gtk::RESPONSE_OK, [&] { result = app.move_survey_to(MyApp::WD_UPLOADED, path); });
  EXPECT_EQ(RET_FAILURE, result);
  EXPECT_EQ(from, path);
  EXPECT_EQ(0U, seen.text.raw().find("Failed to move survey file from " + from + " to " +
                                     app.survey_root + "/Uploaded/a: (via gioerr) "))
      << seen.text;
  EXPECT_EQ(survey(), read_file(from));
}
