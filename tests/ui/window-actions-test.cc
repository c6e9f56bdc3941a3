#include "core/version.h"
#include "support/dialogs.h"
#include "support/main-loop.h"
#include "support/output.h"
#include "support/window-fixture.h"
#include "ui/survey-window.h"

#include <gtest/gtest.h>
#include <gtkmm/application.h>
#include <gtkmm/menubar.h>
#include <gtkmm/separatormenuitem.h>

#include <filesystem>

namespace fs = std::filesystem;

namespace {

class WindowActions : public WindowTest
{
public:
  WindowActions() { open_window(); }

  void activate(const char* action) const { window->actions.at(action)->activate(); }
  // Presses a key with Control. Returns whether the window handles it.
  bool press_control(unsigned int key) const
  {
    const bool handled = gtk_accel_groups_activate(G_OBJECT(window->gobj()), key, GDK_CONTROL_MASK);
    settle();
    return handled;
  }
  // Replaces a shipped file with `text`, or removes it if `text` is null.
  void replace_resource(const char* name, const char* text) const
  {
    const fs::path resources = application_dir.root + "/resources";
    if (fs::is_symlink(resources)) {
      const auto shipped = fs::read_symlink(resources);
      fs::remove(resources);
      fs::create_directory(resources);
      for (const auto& entry : fs::directory_iterator(shipped))
        fs::create_symlink(entry.path(), resources / entry.path().filename());
    }
    fs::remove(resources / name);
    if (text)
      write_file(resources / name, text);
  }
};

// Returns the menu's visible entries; a separator is "-".
std::vector<std::string> entries(Gtk::MenuShell& menu)
{
  std::vector<std::string> labels;
  for (auto* child : menu.get_children()) {
    auto* item = dynamic_cast<Gtk::MenuItem*>(child);
    if (!item || !item->get_visible())
      continue;
    labels.push_back(dynamic_cast<Gtk::SeparatorMenuItem*>(item) ? "-" : item->get_label().raw());
  }
  return labels;
}

} // namespace

TEST_F(WindowActions, HaveTheirLabelsTooltipsAndIcons)
{
  const struct {
    const char *name, *label, *tooltip, *stock;
  } expected[] = {
      {"FileMenu", "_File", "", ""},
      {"FileOpen", "_Open existing survey...", "Open saved survey file", "gtk-open"},
      {"FileDelete", "_Delete saved survey...", "Delete a saved survey", "gtk-delete"},
      {"FileNew", "_New survey...", "Start new survey", "gtk-new"},
      {"FileSaveForLater", "_Save survey for later", "Save survey to finish later", "gtk-save"},
      {"FileSaveForUpload", "Mark as _ready to upload", "Save survey for later uploading", ""},
      {"FileUploadThis", "_Upload this survey", "Upload only this survey now", "gtk-network"},
      {"FileUploadAll", "Upload _all ready surveys", "Upload all surveys marked ready now",
       "gtk-network"},
      {"FileClose", "_Close Survey", "Close current survey", "gtk-close"},
      {"FileQuit", "_Quit", "Quit program and close all windows", "gtk-quit"},
      {"EditMenu", "_Edit", "", ""},
      {"EditCut", "Cut", "Cut", "gtk-cut"},
      {"EditCopy", "Copy", "Copy", "gtk-copy"},
      {"EditPaste", "Paste", "Paste", "gtk-paste"},
      {"ViewMenu", "_View", "", ""},
      {"ViewToolbar", "_Toolbar", "View toolbar", ""},
      {"WindowMenu", "_Window", "", ""},
      {"HelpMenu", "_Help", "", ""},
      {"HelpInstructions", "_Instructions", "Show information about how to use this program",
       "gtk-help"},
      {"HelpContact", "_Contact MAVO", "How to contact Mavo", ""},
      {"HelpCheckForUpdates", "Check For _Updates",
       "Check MAVO web site for updated program or data files", ""},
      {"HelpReleaseNotes", "_Release Notes", "Show what has been changed recently in this program",
       ""},
      {"HelpAbout", "_About MAVO Survey...", "About MAVO Survey", "gtk-about"},
  };
  EXPECT_EQ(std::size(expected), window->actions.size());
  EXPECT_EQ(std::size(expected), window->action_group->get_actions().size());
  for (const auto& e : expected) {
    ASSERT_EQ(1U, window->actions.count(e.name)) << e.name;
    const auto action = window->actions[e.name];
    EXPECT_EQ(action, window->action_group->get_action(e.name)) << e.name;
    EXPECT_EQ(e.label, action->get_label()) << e.name;
    EXPECT_EQ(e.tooltip, action->get_tooltip()) << e.name;
    EXPECT_EQ(e.stock, action->property_stock_id().get_value().get_string()) << e.name;
    EXPECT_TRUE(action->get_sensitive()) << e.name;
  }
  ASSERT_EQ(1U, window->toggle_actions.size());
  EXPECT_EQ(window->actions["ViewToolbar"], window->toggle_actions["ViewToolbar"]);
  EXPECT_FALSE(window->toggle_actions["ViewToolbar"]->get_active());
}

TEST_F(WindowActions, AreInTheMenuBarInTheirOrder)
{
  auto* bar = dynamic_cast<Gtk::MenuBar*>(window->menubar);
  ASSERT_NE(nullptr, bar);
  EXPECT_TRUE(bar->get_mapped());
  EXPECT_EQ(bar, window->survey_window_box->get_children().at(0));
  EXPECT_EQ((std::vector<std::string>{"_File", "_Help"}), entries(*bar))
      << "Edit and View are hidden";

  const auto menu = [&](const char* path) {
    return dynamic_cast<Gtk::MenuItem*>(window->ui_manager->get_widget(path))->get_submenu();
  };
  const std::vector<std::string> file = {"_New survey...",
                                         "_Delete saved survey...",
                                         "_Open existing survey...",
                                         "-",
                                         "_Save survey for later",
                                         "Mark as _ready to upload",
                                         "-",
                                         "_Upload this survey",
                                         "Upload _all ready surveys",
                                         "-",
                                         "_Close Survey",
                                         "_Quit"};
  EXPECT_EQ(file, entries(*menu("/MenuBar/FileMenu")));
  EXPECT_EQ((std::vector<std::string>{"Cut", "Copy", "Paste"}),
            entries(*menu("/MenuBar/EditMenu")));
  EXPECT_EQ((std::vector<std::string>{"_Toolbar"}), entries(*menu("/MenuBar/ViewMenu")));
  EXPECT_EQ((std::vector<std::string>{"_Instructions", "_Contact MAVO", "Check For _Updates",
                                      "_Release Notes", "_About MAVO Survey..."}),
            entries(*menu("/MenuBar/HelpMenu")));
  EXPECT_FALSE(window->actions["EditMenu"]->get_visible());
  EXPECT_FALSE(window->actions["ViewMenu"]->get_visible());
}

TEST_F(WindowActions, HaveAHiddenToolbarBelowTheMenus)
{
  ASSERT_NE(nullptr, window->toolbar);
  EXPECT_FALSE(window->toolbar->get_visible());
  EXPECT_EQ(window->toolbar, window->survey_window_box->get_children().at(1));
  std::vector<std::string> tools;
  for (auto* child : dynamic_cast<Gtk::Container&>(*window->toolbar).get_children())
    tools.push_back(child->get_name());
  EXPECT_EQ(
      (std::vector<std::string>{"FileNew", "FileOpen", "FileSaveForLater", "FileSaveForUpload",
                                "FileQuit", "FileUploadThis", "FileUploadAll"}),
      tools);
}

TEST_F(WindowActions, CanBeDisabledAndCheckedByName)
{
  window->menuitem_enable("FileQuit", false);
  EXPECT_FALSE(window->actions["FileQuit"]->get_sensitive());
  window->menuitem_enable("FileQuit", true);
  EXPECT_TRUE(window->actions["FileQuit"]->get_sensitive());
  output_of([&] { window->menuitem_check("ViewToolbar", true); });
  EXPECT_TRUE(window->toggle_actions["ViewToolbar"]->get_active());
}

TEST_F(WindowActions, ShowAndHideTheToolbarAndTraceIt)
{
  const auto toggle = [&] { activate("ViewToolbar"); };
  EXPECT_EQ("ViewToolbar() - now TRUE\n", output_of(toggle));
  EXPECT_TRUE(window->toolbar->get_visible());
  EXPECT_EQ("ViewToolbar() - now false\n", output_of(toggle));
  EXPECT_FALSE(window->toolbar->get_visible());
}

TEST_F(WindowActions, OnlyPrintIfTheyAreUnfinished)
{
  for (const std::string name : {"EditCut", "EditCopy", "EditPaste"})
    EXPECT_EQ("unimplemented menu action " + name + "\n",
              output_of([&] { activate(name.c_str()); }));
}

TEST_F(WindowActions, KeepTheKeysOfHiddenMenus)
{
  const struct {
    unsigned int key;
    const char* action;
  } cases[] = {{GDK_KEY_x, "EditCut"}, {GDK_KEY_c, "EditCopy"}, {GDK_KEY_v, "EditPaste"}};
  for (const auto& c : cases)
    EXPECT_EQ(std::string("unimplemented menu action ") + c.action + "\n",
              output_of([&] { EXPECT_TRUE(press_control(c.key)) << c.action; }));
}

TEST_F(WindowActions, SaveByKey)
{
  choose_subregion("Northwest");
  const auto seen = answer_next_dialog(Gtk::RESPONSE_OK, [&] { press_control(GDK_KEY_s); });
  EXPECT_EQ("Survey Saved", seen.title);
}

TEST_F(WindowActions, StartANewSurveyByKey)
{
  EXPECT_TRUE(press_control(GDK_KEY_n));
  EXPECT_FALSE(window->get_visible());
  EXPECT_EQ(1U, visible_windows().size());
}

TEST_F(WindowActions, CloseByKey)
{
  EXPECT_TRUE(press_control(GDK_KEY_w));
  EXPECT_FALSE(window->get_visible());
}

TEST_F(WindowActions, QuitByKey)
{
  EXPECT_TRUE(press_control(GDK_KEY_q));
  EXPECT_FALSE(window->get_visible());
}

TEST_F(WindowActions, RefuseToSaveWithoutALocation)
{
  for (const char* name : {"FileSaveForLater", "FileSaveForUpload"}) {
    const auto seen = answer_next_dialog(Gtk::RESPONSE_OK, [&] { activate(name); });
    EXPECT_EQ("ERROR: Survey NOT Saved!!!", seen.title) << name;
  }
}

TEST_F(WindowActions, SaveIntoTheDirectoryOfTheirName)
{
  choose_subregion("Northwest");
  answer_next_dialog(Gtk::RESPONSE_OK, [&] { activate("FileSaveForLater"); });
  EXPECT_TRUE(
      file_exists(application_dir.root + "/store/In Progress/PNW-00000000-0000.MAVO-Survey"));
  answer_next_dialog(Gtk::RESPONSE_OK, [&] { activate("FileSaveForUpload"); });
  EXPECT_TRUE(
      file_exists(application_dir.root + "/store/Ready To Upload/PNW-00000000-0000.MAVO-Survey"));
}

TEST_F(WindowActions, AskBeforeAChangedSurveyIsClosed)
{
  choose_subregion("Northwest");
  const struct {
    const char *action, *doing_what;
  } cases[] = {{"FileClose", "closing this survey"},
               {"FileQuit", "exiting this program"},
               {"HelpCheckForUpdates", "checking for updates"}};
  for (const auto& c : cases) {
    const auto seen = answer_next_dialog(Gtk::RESPONSE_CANCEL, [&] { activate(c.action); });
    EXPECT_EQ("Survey Not Saved Yet!", seen.title) << c.action;
    EXPECT_PRED_FORMAT2(testing::IsSubstring, std::string("Save it before ") + c.doing_what + "?",
                        seen.text.raw())
        << c.action;
    EXPECT_TRUE(window->get_visible()) << c.action;
  }
  answer_next_dialog(Gtk::RESPONSE_NO, [&] { activate("FileClose"); });
  EXPECT_FALSE(window->get_visible());
}

TEST_F(WindowActions, QuitOnlyTheirOwnWindow)
{
  auto* first = window;
  open_window();
  activate("FileQuit");
  settle();
  EXPECT_FALSE(window->get_visible());
  EXPECT_TRUE(first->get_visible());
  EXPECT_EQ(1U, my_app->app->get_windows().size());
}

TEST_F(WindowActions, ShowTheInstructions)
{
  replace_resource("instructions.txt", "<b>Dive</b> &amp; write.\n");
  const auto seen = answer_next_dialog(Gtk::RESPONSE_CLOSE, [&] { activate("HelpInstructions"); });
  EXPECT_EQ("Instructions for survey data entry", seen.title);
  EXPECT_PRED_FORMAT2(testing::IsSubstring, "Dive & write.", seen.text.raw());
  EXPECT_TRUE(seen.has_icon);
  EXPECT_FALSE(window->instructions_dialog->get_visible());
}

TEST_F(WindowActions, ShowTheReleaseNotesInTheSameDialog)
{
  answer_next_dialog(Gtk::RESPONSE_CLOSE, [&] { activate("HelpInstructions"); });
  replace_resource("release-notes.txt", "Nothing <i>new</i>.");
  const auto seen = answer_next_dialog(Gtk::RESPONSE_CLOSE, [&] { activate("HelpReleaseNotes"); });
  EXPECT_EQ(std::string("Release notes - Version ") + BuildInfo::version_str, seen.title.raw());
  EXPECT_EQ("Nothing new.", window->program_instructions->get_text());
}

TEST_F(WindowActions, ShowTheShippedHelpTexts)
{
  for (const char* action : {"HelpInstructions", "HelpReleaseNotes"}) {
    answer_next_dialog(Gtk::RESPONSE_CLOSE, [&] { activate(action); });
    EXPECT_GT(window->program_instructions->get_text().size(), 200U) << action;
  }
}

TEST_F(WindowActions, ReportAHelpFileThatCannotBeRead)
{
  const struct {
    const char *action, *file, *message;
  } cases[] = {
      {"HelpInstructions", "instructions.txt",
       "Failed to read instructions file resources/instructions.txt"},
      {"HelpReleaseNotes", "release-notes.txt",
       "Failed to read release notes file resources/release-notes.txt"},
  };
  for (const auto& c : cases) {
    replace_resource(c.file, nullptr);
    auto seen = answer_next_dialog(Gtk::RESPONSE_OK, [&] { activate(c.action); });
    EXPECT_EQ("Error occurred", seen.title);
    EXPECT_EQ(c.message, seen.text) << "missing";
    fs::create_directory(application_dir.root + "/resources/" + c.file);
    seen = answer_next_dialog(Gtk::RESPONSE_OK, [&] { activate(c.action); });
    EXPECT_EQ(c.message, seen.text) << "a directory";
  }
}

TEST_F(WindowActions, ReportAHelpFileThatIsNotMarkup)
{
  const char* const bad_texts[] = {"<b>never closed", "Salt & pepper", "not \xff text"};
  for (const char* text : bad_texts) {
    replace_resource("instructions.txt", text);
    answer_next_dialog(Gtk::RESPONSE_CLOSE, [&] { activate("HelpInstructions"); });
    EXPECT_EQ("error parsing markup in resources/instructions.txt",
              window->program_instructions->get_text())
        << text;
    replace_resource("release-notes.txt", text);
    answer_next_dialog(Gtk::RESPONSE_CLOSE, [&] { activate("HelpReleaseNotes"); });
    EXPECT_EQ("error parsing markup in resources/release-notes.txt",
              window->program_instructions->get_text())
        << text;
  }
}

TEST_F(WindowActions, ShowAnEmptyHelpFile)
{
  replace_resource("instructions.txt", "");
  answer_next_dialog(Gtk::RESPONSE_CLOSE, [&] { activate("HelpInstructions"); });
  EXPECT_EQ("", window->program_instructions->get_text());
}

TEST_F(WindowActions, ShowHowToReachTheOrganisation)
{
  const auto seen = answer_next_dialog(Gtk::RESPONSE_CLOSE, [&] { activate("HelpContact"); });
  EXPECT_PRED_FORMAT2(testing::IsSubstring, "@", seen.text.raw()) << seen.text;
  EXPECT_FALSE(window->contact_dialog->get_visible());
}

TEST_F(WindowActions, ShowTheVersionInTheAboutBox)
{
  answer_next_dialog(Gtk::RESPONSE_DELETE_EVENT, [&] { activate("HelpAbout"); });
  EXPECT_EQ(std::string("Version ") + BuildInfo::version_str + "\nBuilt " + BuildInfo::date_str,
            window->about_dialog->get_version().raw());
  EXPECT_FALSE(window->about_dialog->get_visible());
}

TEST_F(WindowActions, CanShowADialogAgain)
{
  for (const char* action : {"HelpContact", "HelpAbout", "HelpInstructions"})
    for (const int response : {GTK_RESPONSE_DELETE_EVENT, GTK_RESPONSE_CLOSE})
      answer_next_dialog(response, [&] { activate(action); });
}

TEST_F(WindowActions, OfTheServerExplainWhyTheyCannotStart)
{
  const std::vector<std::pair<const char*, const char*>> cases = {
      {"FileUploadThis", "Can't upload yet"},
      {"FileUploadAll", "No Surveys Ready!"},
      {"HelpCheckForUpdates", "Can't reach MAVO server"},
  };
  for (const auto& [action, title] : cases) {
    const char* const name = action;
    EXPECT_EQ(title, answer_next_dialog(Gtk::RESPONSE_OK, [&] { activate(name); }).title);
  }
  EXPECT_TRUE(window->get_visible());
}
