#include "core/url-handlers.h"
#include "support/data-set.h"
#include "support/output.h"

#include <giomm/appinfo.h>
#include <glibmm/miscutils.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

// A private search path with commands, and the user's directories in the test's home.
class UrlHandlers : public testing::Test
{
protected:
  static void SetUpTestSuite() // hides the system's handlers before GLib reads them
  {
    for (const char* const name : {"XDG_DATA_DIRS", "XDG_CONFIG_DIRS"})
      setenv(name, "/no/such/directory", 1);
    unsetenv("XDG_CURRENT_DESKTOP");
  }
  void SetUp() override
  {
    remove_user_files();
    executable("first/update-desktop-database"); // GLib runs it
    setenv("PATH", (commands.dir + "first:" + commands.dir + "second").c_str(), 1);
  }
  void TearDown() override
  {
    setenv("PATH", path_before.c_str(), 1);
    remove_user_files();
  }

  std::string executable(const std::string& name) const
  {
    std::string path = commands.dir + name;
    write_file(path, "#!/bin/sh\n");
    fs::permissions(path, fs::perms::owner_all);
    return path;
  }
  void link(const std::string& name, const std::string& target) const
  {
    fs::create_directories(fs::path(commands.dir + name).parent_path());
    fs::create_symlink(target, commands.dir + name);
  }

  void remove_user_files() const
  {
    fs::remove_all(applications);
    fs::remove(associations);
  }
  // Registers "open" like an earlier version of the program, which accepted any "open".
  void register_open(const std::string& scheme) const
  {
    const auto handler = Gio::AppInfo::create_from_commandline("open", "open hack",
                                                               Gio::APP_INFO_CREATE_SUPPORTS_URIS);
    ASSERT_TRUE(handler->set_as_default_for_type("x-scheme-handler/" + scheme));
  }
  void remove() const
  {
    const TraceLevel quiet(-1);
    remove_open_handlers(Glib::get_user_data_dir(), Glib::get_user_config_dir());
  }
  std::size_t desktop_files() const
  {
    std::size_t count = 0;
    if (fs::exists(applications))
      for (const auto& entry : fs::directory_iterator(applications))
        count += entry.path().extension() == ".desktop";
    return count;
  }

  const std::string path_before = Glib::getenv("PATH");
  const std::string applications = Glib::get_user_data_dir() + "/applications";
  const std::string associations = Glib::get_user_config_dir() + "/mimeapps.list";
  DataSet commands;
};

const char* const not_set_up = "No default app for http!\nFailed to set up handler for http\n"
                               "No default app for https!\nFailed to set up handler for https\n"
                               "No default app for mailto!\nFailed to set up handler for mailto\n";

} // namespace

TEST_F(UrlHandlers, DoNotAcceptAMissingOpen)
{
  EXPECT_FALSE(has_open_command());
  link("first/open", commands.dir + "gone");
  EXPECT_FALSE(has_open_command());
}

TEST_F(UrlHandlers, DoNotAcceptAnOpenThatIsAnotherNameOfXdgOpen)
{
  executable("bin/xdg-open");
  link("alternatives/open", commands.dir + "bin/xdg-open");
  link("first/open", "../alternatives/open");
  EXPECT_FALSE(has_open_command());
}

TEST_F(UrlHandlers, AcceptAnyOtherOpen)
{
  executable("bin/opener");
  executable("second/xdg-open");
  link("second/open", "../bin/opener");
  EXPECT_TRUE(has_open_command());
  executable("first/open"); // a script that is found first
  EXPECT_TRUE(has_open_command());
}

TEST_F(UrlHandlers, RegisterNothingIfOpenIsAnotherNameOfXdgOpen)
{
  executable("second/xdg-open");
  link("second/open", "xdg-open");
  EXPECT_EQ(not_set_up, output_of(0, check_url_handlers));
  EXPECT_EQ(0U, desktop_files());
  EXPECT_FALSE(file_exists(associations));
  EXPECT_FALSE(has_url_handler("mailto"));
}

TEST_F(UrlHandlers, RegisterNothingIfThereIsNoOpen)
{
  EXPECT_EQ(not_set_up, output_of(0, check_url_handlers));
  EXPECT_EQ(0U, desktop_files());
  EXPECT_FALSE(file_exists(associations));
}

TEST_F(UrlHandlers, IgnoreAndRemoveAnXdgOpenThatAnEarlierStartRegistered)
{
  const std::string xdg_open = executable("second/xdg-open");
  link("second/open", xdg_open);
  for (const char* scheme : {"http", "https", "mailto"})
    register_open(scheme);
  ASSERT_EQ(3U, desktop_files());
  EXPECT_FALSE(has_url_handler("mailto"));
  EXPECT_TRUE(has_endless_handler("mailto"));
  EXPECT_EQ("Failed to set up handler for http\nFailed to set up handler for https\n"
            "Failed to set up handler for mailto\n",
            output_of(-1, check_url_handlers));
  EXPECT_EQ(0U, desktop_files());
  EXPECT_EQ(std::string::npos, read_file(associations).find("userapp-open hack-"));
}

TEST_F(UrlHandlers, AreRegisteredOnceIfOpenIsNotXdgOpen)
{
  executable("first/open");
  EXPECT_EQ("No default app for http!\nNo default app for https!\nNo default app for mailto!\n",
            output_of(0, check_url_handlers));
  const std::size_t registered = desktop_files();
  const std::string list = read_file(associations);
  EXPECT_TRUE(has_url_handler("mailto"));
  EXPECT_EQ("", output_of(0, check_url_handlers));
  EXPECT_EQ(registered, desktop_files());
  EXPECT_EQ(list, read_file(associations));
}

TEST_F(UrlHandlers, RemoveAHandlerThatCouldNotBecomeTheDefault)
{
  executable("first/open");
  fs::create_directories(associations); // even root cannot write a file there
  EXPECT_EQ(not_set_up, output_of(0, check_url_handlers));
  EXPECT_EQ(0U, desktop_files());
}

TEST_F(UrlHandlers, KeepWhatTheUserChose)
{
  register_open("mailto");
  const std::string other = applications + "/userapp-open hack-MINE.desktop";
  write_file(other, "[Desktop Entry]\nType=Application\nName=My opener\nExec=open %u\n");
  write_file(associations,
             "# mine\n\n[Default Applications]\n"
             "x-scheme-handler/http=userapp-open hack-AAAAAA.desktop;firefox.desktop;\n"
             "x-scheme-handler/mailto=userapp-open hack-AAAAAA.desktop\n"
             "text/plain=editor.desktop\n"
             "\n[Added Associations]\n"
             "text/html=userapp-open hack-MINE.desktop;\n");
  remove();
  EXPECT_EQ(1U, desktop_files());
  EXPECT_TRUE(file_exists(other));
  EXPECT_EQ("# mine\n\n[Default Applications]\n"
            "x-scheme-handler/http=firefox.desktop;\n"
            "text/plain=editor.desktop\n"
            "\n[Added Associations]\n"
            "text/html=userapp-open hack-MINE.desktop;\n",
            read_file(associations));
}

TEST_F(UrlHandlers, DoNotTouchAListOfAssociationsWithoutSuchAnEntry)
{
  for (const std::string text : {"", "not a list", "[Default Applications]\na/b = c.desktop\n"}) {
    write_file(associations, text);
    remove();
    EXPECT_EQ(text, read_file(associations));
  }
}
