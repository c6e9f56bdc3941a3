#include "core/my-app.h"
#include "core/report.h"
#include "support/dialogs.h"

#include <gdkmm/pixbuf.h>
#include <gtest/gtest.h>
#include <gtkmm/messagedialog.h>

#include <cstdlib>
#include <iostream>

namespace {

// Restores the program's icons at the end.
class IconList
{
public:
  IconList() : before(MyApp::icon_list) {}
  ~IconList() { MyApp::icon_list = before; }
  IconList(const IconList&) = delete;
  IconList& operator=(const IconList&) = delete;

private:
  std::vector<Glib::RefPtr<Gdk::Pixbuf>> before;
};

} // namespace

TEST(ReportDialog, IsAWarningWithOk)
{
  const SeenDialog seen = answer_next_dialog(
      Gtk::RESPONSE_OK, [] { EXPECT_EQ(RET_FAILURE, error("cannot <b>do</b> it")); });
  EXPECT_EQ("Error occurred", seen.title.raw());
  EXPECT_EQ("cannot do it", seen.text.raw());
  EXPECT_EQ(Gtk::MESSAGE_WARNING, seen.message_type);
  EXPECT_EQ(1U, seen.buttons.size());
}

TEST(ReportDialog, HasTheTitleOfTheReport)
{
  EXPECT_EQ("Oh no",
            answer_next_dialog(Gtk::RESPONSE_OK, [] { titled_error("Oh no", "a"); }).title.raw());
  EXPECT_EQ("Error occurred",
            answer_next_dialog(Gtk::RESPONSE_OK, [] { titled_error("", "a"); }).title.raw());
}

TEST(ReportDialog, ShowsTextThatIsNotMarkupLiterally)
{
  const struct {
    const char* message;
    const char* shown;
  } cases[] = {
      {"a < b & c", "a < b & c"},
      {"<b>never closed", "<b>never closed"},
      {"caf\xc3\xa9 \xff", "café \ufffd"},
      {"<nonsense>x</nonsense>", "<nonsense>x</nonsense>"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(c.shown,
              answer_next_dialog(Gtk::RESPONSE_OK, [&] { error("%s", c.message); }).text.raw());
}

TEST(ReportDialog, ShowsALinkAsItsText)
{
  const SeenDialog seen = answer_next_dialog(
      Gtk::RESPONSE_OK, [] { error("write to <a href=\"mailto:a@b.example\">a@b.example</a>"); });
  EXPECT_EQ("write to a@b.example", seen.text.raw());
}

TEST(ReportDialog, HasNoIconBeforeTheIconsAreLoaded)
{
  const IconList restore;
  MyApp::icon_list.clear();
  EXPECT_FALSE(answer_next_dialog(Gtk::RESPONSE_OK, [] { error("a"); }).has_icon);
}

TEST(ReportDialog, HasAnIconUnlessAllIconsAreMissing)
{
  const IconList restore;
  MyApp::icon_list = {{}, Gdk::Pixbuf::create(Gdk::COLORSPACE_RGB, false, 8, 16, 16)};
  EXPECT_TRUE(answer_next_dialog(Gtk::RESPONSE_OK, [] { error("a"); }).has_icon);
  MyApp::icon_list = {{}};
  EXPECT_FALSE(answer_next_dialog(Gtk::RESPONSE_OK, [] { error("a"); }).has_icon);
}

TEST(ReportDialog, ReturnsWhenItIsClosed)
{
  answer_next_dialog(Gtk::RESPONSE_DELETE_EVENT, [] { EXPECT_EQ(RET_FAILURE, error("a")); });
}

// The dialog of a fatal report ends the process. So a child process shows it and prints to
// standard error what it saw. Memory that the child inherited is not a leak.
TEST(FatalDialogDeathTest, IsAnErrorWithCloseThatEndsTheProcess)
{
  testing::FLAGS_gtest_death_test_style = "threadsafe"; // a forked process cannot use the display
  setenv("ASAN_OPTIONS", "detect_leaks=0", 1);
  const struct {
    RetCode code;
    int status;
    const char* shown;
  } cases[] = {
      {RET_SUCCESS, 0, "showed type 3 with 1 button: Error occurred: all is lost\n"},
      {RET_ASSERTION, 47, "showed type 3 with 1 button: Error occurred: Uh oh, all is lost\n"},
  };
  static_assert(Gtk::MESSAGE_ERROR == 3);
  for (const auto& c : cases) {
    EXPECT_EXIT(meet_next_dialog(
                    [](Gtk::Dialog& dialog) {
                      const SeenDialog seen = describe(dialog);
                      std::cerr << "showed type " << seen.message_type << " with "
                                << seen.buttons.size() << " button: " << seen.title << ": "
                                << seen.text << std::endl;
                      dialog.response(Gtk::RESPONSE_CLOSE);
                    },
                    [&] { fatal(c.code, "all is <i>lost</i>"); }),
                testing::ExitedWithCode(c.status), c.shown);
  }
}
