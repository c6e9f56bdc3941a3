#include "store/saving-test.h"
#include "store/survey-file.h"
#include "support/dialogs.h"
#include "support/main-loop.h"
#include "support/memory.h"
#include "support/output.h"
#include "ui/member-panel.h"
#include "ui/start-panel.h"
#include "ui/survey-window.h"

#include <glibmm/convert.h>
#include <gtkmm/application.h>
#include <gtkmm/filechooserdialog.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

namespace fs = std::filesystem;

namespace {

const char* const description =
    "Member 1234 - Northwest: fish and invertebrates - 2021-06-30 at 9 AM - Rosario Wall";

// Tests files among the surveys that come from other programs, old versions of this program, and
// attackers.
class ForeignFiles : public SavingTest
{
public:
  void SetUp() override
  {
    SavingTest::SetUp();
    pipe = application_dir.root + "/pipe";
    secret = application_dir.root + "/secret";
    ASSERT_EQ(0, mkfifo(pipe.c_str(), 0600)); // opening it blocks forever
    write_file(secret, "secret words");
  }

  std::string place(const std::string& name) const
  {
    return my_app->get_survey_dir(MyApp::WD_IN_PROGRESS) + "/" + name;
  }
  std::string put(const std::string& text, const std::string& name = "file.MAVO-Survey") const
  {
    write_file(place(name), text);
    return place(name);
  }
  std::string describe(const std::string& path) const
  {
    std::string described;
    said += output_of([&] { described = my_app->get_survey_description(path, nullptr); });
    return described;
  }
  // Opens the file in a new window. Returns "opened", or the text of the dialog after the path.
  std::string open(const std::string& path)
  {
    create_window();
    RetCode result = RET_FAILURE;
    const auto seen = answer_all_dialogs(Gtk::RESPONSE_OK, [&] { result = window->do_open(path); });
    if (result == RET_SUCCESS)
      return "opened";
    if (seen.size() != 1)
      return std::to_string(seen.size()) + " dialogs";
    const std::string text = seen[0].text.raw();
    EXPECT_EQ(0U, text.find(path + ": ")) << text;
    return text.substr(std::min(text.size(), path.size() + 2));
  }

  std::string pipe;
  std::string secret;
  mutable std::string said;
};

// Returns a survey with a document type and with `name` as its last name.
std::string with_type(const std::string& type, const std::string& name)
{
  const std::string text =
      SurveyFile().with("last_name", "<last_name>" + name + "</last_name>").text();
  return std::string(text).insert(text.find("<MAVO-Survey"), type + "\n");
}

std::string with_entity(const std::string& entity, const std::string& name)
{
  return with_type("<!DOCTYPE MAVO-Survey [" + entity + "]>", name);
}

std::string repeated(const std::string& text, std::size_t count)
{
  std::string all;
  all.reserve(text.size() * count);
  for (std::size_t i = 0; i < count; ++i)
    all += text;
  return all;
}

std::string billion_laughs()
{
  std::string entities = "<!ENTITY l0 '" + repeated("ha ", 20) + "'>";
  for (int i = 1; i <= 12; ++i)
    entities += "<!ENTITY l" + std::to_string(i) + " '" +
                repeated("&l" + std::to_string(i - 1) + ";", 10) + "'>";
  return with_entity(entities, "&l12;");
}

} // namespace

TEST_F(ForeignFiles, AreSurveysInAnyEncodingAndWithAnyName)
{
  const std::string text = SurveyFile().text();
  std::string text_16 = text;
  text_16.replace(text_16.find("UTF-8"), 5, "UTF-16");
  const struct {
    const char* name;
    std::string text;
  } cases[] = {
      {"old.MAVO_survey", text},
      {"no extension", text},
      {"mark.MAVO-Survey", "\xef\xbb\xbf" + text},
      {"wide.MAVO-Survey", Glib::convert(text_16, "UTF-16", "UTF-8")},
      {"styled.MAVO-Survey", "<?xml-stylesheet href='a.xsl'?>" + text.substr(text.find('\n'))},
      {"caf\xe9 <b>.MAVO-Survey", text},
  };
  for (const auto& c : cases) {
    const std::string path = put(c.text, c.name);
    EXPECT_EQ(description, describe(path)) << c.name;
    EXPECT_EQ("opened", open(path)) << c.name;
    EXPECT_EQ("Núñez & <Sons>", window->member_panel->get_last_name()) << c.name;
  }
}

TEST_F(ForeignFiles, MayDefineTheirOwnEntities)
{
  const std::string path = put(with_entity("<!ENTITY me 'Smith'>", "Mr &me; &amp; co"));
  EXPECT_EQ(description, describe(path));
  EXPECT_EQ("opened", open(path));
  EXPECT_EQ("Mr Smith & co", window->member_panel->get_last_name());
}

TEST_F(ForeignFiles, NeverIncludeTextFromOtherFiles)
{
  const std::string refusal = "Survey draws text from other files, which are not read";
  for (const std::string& target : {pipe, secret, std::string("/etc/hostname")}) {
    for (const std::string& url : {"file://" + target, target}) {
      const std::string path = put(with_entity("<!ENTITY x SYSTEM '" + url + "'>", "&x;"));
      EXPECT_EQ("", describe(path));
      EXPECT_EQ(refusal, open(path)) << url;
      EXPECT_EQ("", window->member_panel->get_last_name());
      put(with_entity("<!ENTITY % x SYSTEM '" + url + "'> %x;", "Smith"));
      EXPECT_EQ("", describe(path));
      EXPECT_EQ(refusal, open(path)) << url;
    }
  }
  EXPECT_EQ(std::string::npos, said.find("secret words"));
}

TEST_F(ForeignFiles, AreReadWithoutTheirDocumentTypeAndInclusions)
{
  const std::string path =
      put(with_type("<!DOCTYPE MAVO-Survey SYSTEM 'file://" + pipe + "'>", "Smith"));
  EXPECT_EQ(description, describe(path));
  EXPECT_EQ("opened", open(path));

  put(SurveyFile()
          .with("last_name", "<last_name xmlns:xi='http://www.w3.org/2001/XInclude'>"
                             "<xi:include parse='text' href='file://" +
                                 pipe + "'/></last_name>")
          .text());
  EXPECT_EQ(description, describe(path));
  EXPECT_EQ("opened", open(path));
  EXPECT_EQ("", window->member_panel->get_last_name());
}

// A file that takes exponential time would exceed the time limit of the test program.
TEST_F(ForeignFiles, OfAnySizeAreRefusedWithLittleMemory)
{
  std::string noise;
  for (std::size_t i = 0; i < 50'000'000; ++i)
    noise += static_cast<char>((i * 2654435761U) >> 13U);
  const struct {
    const char* why;
    std::string text;
  } cases[] = {
      {"billion laughs", billion_laughs()},
      {"a long text many times",
       with_entity("<!ENTITY x '" + std::string(100'000, 'x') + "'>", repeated("&x;", 100'000))},
      {"deep", with_type("", repeated("<a>", 100'000) + repeated("</a>", 100'000))},
      {"noise", noise},
      {"wide", with_type("", repeated("<a/>", 10'000'000))},
      {"one long word", with_type("", repeated("x", 50'000'000))},
  };
  noise.clear();
  const long memory = memory_peak_kb();
  for (const auto& c : cases) {
    const std::string path = put(c.text);
    EXPECT_EQ("", describe(path)) << c.why;
    EXPECT_NE("opened", open(path)) << c.why;
  }
  EXPECT_GT(200L * 1024 + memory_kept_back_kb, memory_peak_kb() - memory);
}

TEST_F(ForeignFiles, ThatAreNotRegularAreRefused)
{
  fs::create_directory(place("directory"));
  fs::create_symlink("/nowhere", place("dangling"));
  fs::create_symlink("/dev/zero", place("zeros"));
  fs::create_symlink(place("loop"), place("loop"));
  ASSERT_EQ(0, mkfifo(place("pipe").c_str(), 0600));
  const struct {
    const char* name;
    const char* expected;
  } cases[] = {
      {"directory", "Not a file"}, {"dangling", "No such file or directory"},
      {"zeros", "Not a file"},     {"loop", "Too many levels of symbolic links"},
      {"pipe", "Not a file"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ("", describe(place(c.name))) << c.name;
    EXPECT_EQ(c.expected, open(place(c.name))) << c.name;
  }
  EXPECT_EQ("", said) << "entries that are not regular files are not reported";
}

TEST_F(ForeignFiles, AreInTheListAndDoNotDisturbTheSurveys)
{
  put(SurveyFile().text(), "good");
  put("buy bread", "note.txt");
  put(SurveyFile().text(), "old.MAVO_survey");
  put(with_entity("<!ENTITY x SYSTEM 'file://" + pipe + "'>", "&x;"), "thief");
  put(billion_laughs(), "laughs");
  put(std::string(1000, '\0'), "zeros");
  fs::create_directory(place("directory"));
  ASSERT_EQ(0, mkfifo(place("pipe").c_str(), 0600));
  const std::string closed = put(SurveyFile().text(), "closed");
  fs::permissions(closed, fs::perms::none);
  const bool is_readable = access(closed.c_str(), R_OK) == 0; // if root runs the test

  StartPanel& panel = *window->start_panel;
  output_of([&] { panel.build_survey_model(); });
  std::multiset<std::string> rows;
  panel.store->foreach_iter([&](const Gtk::TreeIter& iter) {
    rows.insert(iter->get_value(panel.columns.description).raw());
    return false;
  });
  EXPECT_EQ(is_readable ? 6U : 7U, rows.count("(corrupted survey file)"));
  EXPECT_EQ(is_readable ? 3U : 2U,
            rows.count("Northwest: fish and invertebrates - 2021-06-30 at 9 AM - Rosario Wall"));
  EXPECT_EQ(1U, rows.count("Member ID -1"));
  fs::permissions(closed, fs::perms::owner_all);
}

// --- windows that are created for a survey ---

namespace {

class NextSurvey : public ForeignFiles
{
public:
  // Returns the number of windows that keep the program alive.
  std::size_t windows() const { return my_app->app->get_windows().size(); }

  void open_by_dialog(const std::string& path, std::vector<int> then_answer)
  {
    int dialogs = 0;
    const auto meet = [&](Gtk::Dialog& dialog) {
      if (dialogs++ > 0) {
        dialog.response(then_answer.at(static_cast<std::size_t>(dialogs) - 2));
        return;
      }
      auto& chooser = dynamic_cast<Gtk::FileChooserDialog&>(dialog);
      chooser.set_filename(path);
      while (chooser.get_filename() != path)
        settle();
      chooser.response(Gtk::RESPONSE_OK);
    };
    SurveyWindow* const current = visible_windows().at(0);
    meet_dialogs(1 + static_cast<int>(then_answer.size()), meet,
                 [&] { current->select_and_open_saved_survey(); });
    settle();
  }
  void open_by_list(const std::string& path)
  {
    SurveyWindow* const current = visible_windows().at(0);
    StartPanel& panel = *current->start_panel;
    panel.build_survey_model();
    panel.survey_tree->expand_all();
    panel.store->foreach ([&](const Gtk::TreePath& row, const Gtk::TreeIter& iter) {
      const bool found = iter->get_value(panel.columns.path) == path;
      if (found)
        panel.survey_tree->set_cursor(row);
      return found;
    });
    answer_all_dialogs(Gtk::RESPONSE_OK, [&] { panel.on_edit_view_button(); });
    settle();
  }
};

} // namespace

TEST_F(NextSurvey, LeavesOneWindowInEveryCase)
{
  const std::string good = put(SurveyFile().text(), "good.MAVO-Survey");
  const std::string bad = put("a note", "bad.MAVO-Survey");
  ASSERT_EQ(1U, windows());
  const struct {
    const char* why;
    std::function<void()> act;
  } cases[] = {
      {"a good file from the list", [&] { open_by_list(good); }},
      {"a bad file from the list", [&] { open_by_list(bad); }},
      {"a good file by the dialog", [&] { open_by_dialog(good, {}); }},
      {"a bad file by the dialog", [&] { open_by_dialog(bad, {Gtk::RESPONSE_OK}); }},
      {"a dialog cancelled",
       [&] {
         answer_next_dialog(Gtk::RESPONSE_CANCEL,
                            [&] { visible_windows().at(0)->select_and_open_saved_survey(); });
       }},
      {"a new survey", [&] { visible_windows().at(0)->on_action_FileNew("FileNew"); }},
      {"a new survey by the button",
       [&] { visible_windows().at(0)->start_panel->on_new_survey_button(); }},
      {"an open survey deleted",
       [&] {
         open_by_list(good);
         StartPanel& panel = *visible_windows().at(0)->start_panel;
         panel.survey_tree->expand_all();
         panel.store->foreach ([&](const Gtk::TreePath& row, const Gtk::TreeIter& iter) {
           if (iter->get_value(panel.columns.path) == good)
             panel.survey_tree->set_cursor(row);
           return false;
         });
         answer_next_dialog(Gtk::RESPONSE_ACCEPT, [&] { panel.on_delete_button(); });
         EXPECT_FALSE(file_exists(good));
       }},
  };
  for (const auto& c : cases) {
    c.act();
    settle();
    EXPECT_EQ(1U, windows()) << c.why;
    ASSERT_EQ(1U, visible_windows().size()) << c.why;
  }
  visible_windows().at(0)->hide();
  settle();
  EXPECT_EQ(0U, windows()) << "the program ends";
}
