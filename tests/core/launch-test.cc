#include "core/launch.h"
#include "core/report.h"

#include <gtest/gtest.h>

namespace {

// An argv that can be changed, with a null pointer at its end, like that of main.
class Arguments
{
public:
  explicit Arguments(std::vector<std::string> the_texts) : texts(std::move(the_texts))
  {
    for (auto& text : texts)
      argv.push_back(text.data());
    argv.push_back(nullptr);
    argc = static_cast<int>(texts.size());
  }

  std::vector<std::string> remaining() const { return {argv.begin(), argv.begin() + argc}; }

  std::vector<std::string> texts;
  std::vector<char*> argv;
  int argc;
};

class DebugArgument : public testing::Test
{
protected:
  void SetUp() override { debug_level = 0; }
  void TearDown() override { debug_level = 0; }

  std::string take(Arguments& arguments)
  {
    testing::internal::CaptureStdout();
    take_debug_argument(arguments.argc, arguments.argv.data());
    return testing::internal::GetCapturedStdout();
  }
};

} // namespace

TEST(LaunchPath, IsSplitAtTheLastTwoSlashes)
{
  const struct {
    const char* argv0;
    const char* dir;
    const char* exec_name;
    bool has_dir;
  } cases[] = {
      {"/opt/app/MacOS/mavo-survey", "/opt/app", "mavo-survey", true},
      {"app/MacOS/mavo-survey", "app", "mavo-survey", true},
      {"MacOS/mavo-survey", "MacOS/mavo-survey", "mavo-survey", false},
      {"mavo-survey", "mavo-survey", "mavo-survey", false},
      {"/mavo-survey", "/mavo-survey", "mavo-survey", false},
      {"/MacOS/mavo-survey", "/", "mavo-survey", true},
      {"", "", "", false},
  };
  for (const auto& c : cases) {
    const LaunchPath path = split_launch_path(c.argv0);
    EXPECT_EQ(c.dir, path.dir) << c.argv0;
    EXPECT_EQ(c.exec_name, path.exec_name) << c.argv0;
    EXPECT_EQ(c.has_dir, path.has_dir) << c.argv0;
  }
}

TEST(LaunchScript, GetsTheExecutableAndThenTheUsersArguments)
{
  const std::vector<std::string> expected{"/opt/app/MacOS/x-env-setup.sh", "--exec-name",
                                          "/opt/app/MacOS/x", "-d3", "--name"};
  EXPECT_EQ(expected, launch_script_command("/opt/app", "x", {"-d3", "--name"}));
}

TEST(LaunchScript, IsBesideAnExecutableBelowTheRootDirectory)
{
  const std::vector<std::string> expected{"/MacOS/x-env-setup.sh", "--exec-name", "/MacOS/x"};
  EXPECT_EQ(expected, launch_script_command("/", "x", {}));
}

TEST_F(DebugArgument, SetsTheLevelAndIsRemoved)
{
  const struct {
    const char* argument;
    int level;
  } cases[] = {{"-d3", 3}, {"-d", 0}, {"-dx", 0}, {"-d-2", -2}, {"-d10abc", 10}};
  for (const auto& c : cases) {
    Arguments arguments({"program", c.argument, "file"});
    EXPECT_EQ("Debug level " + std::to_string(c.level) + "\n", take(arguments)) << c.argument;
    EXPECT_EQ(c.level, debug_level) << c.argument;
    EXPECT_EQ((std::vector<std::string>{"program", "file"}), arguments.remaining()) << c.argument;
    EXPECT_EQ(nullptr, arguments.argv[static_cast<std::size_t>(arguments.argc)]) << c.argument;
  }
}

TEST_F(DebugArgument, LeavesTheNullPointerWhenItIsTheOnlyArgument)
{
  Arguments arguments({"program", "-d1"});
  take(arguments);
  EXPECT_EQ(1, arguments.argc);
  EXPECT_EQ(nullptr, arguments.argv[1]);
}

TEST_F(DebugArgument, IsOnlyRecognisedAsTheFirstArgument)
{
  for (const auto& texts :
       {std::vector<std::string>{"program", "file", "-d3"},
        std::vector<std::string>{"program", "--debug"}, std::vector<std::string>{"program"}}) {
    Arguments arguments(texts);
    EXPECT_EQ("", take(arguments));
    EXPECT_EQ(texts, arguments.remaining());
    EXPECT_EQ(0, debug_level);
  }
}
