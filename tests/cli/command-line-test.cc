// Runs both tools like a user and tests their output and exit status.

#include <gtest/gtest.h>

#include <string>

#include "good-set.h"
#include "tool-run.h"

namespace {

constexpr const char* tools[] = {"mavo-data", "mavo-surveys"};

bool has(const std::string& text, const std::string& part)
{
  return text.find(part) != std::string::npos;
}

} // namespace

TEST(CommandLine, ListsTheCommandsOfATool)
{
  const ToolRun help = run_program("mavo-data", {"--help"});
  EXPECT_EQ(0, help.status);
  EXPECT_TRUE(has(help.out, "mavo-data [OPTION…] COMMAND [ARGUMENT...]")) << help.out;
  EXPECT_TRUE(has(help.out, "\n  check DIR...")) << help.out;
  EXPECT_EQ("", help.err);
}

TEST(CommandLine, ExplainsEachCommand)
{
  const ToolRun help = run_program("mavo-data", {"check", "--help"});
  EXPECT_EQ(0, help.status);
  EXPECT_TRUE(has(help.out, "mavo-data check [OPTION…] DIR...")) << help.out;
  EXPECT_TRUE(has(help.out, "--format=FORMAT")) << help.out;
}

TEST(CommandLine, PrintsTheVersionOfBothTools)
{
  for (const char* const tool : tools) {
    const ToolRun version = run_program(tool, {"--version"});
    EXPECT_EQ(0, version.status);
    EXPECT_EQ(0U, version.out.rfind(tool + std::string(" "), 0)) << version.out;
  }
}

TEST(CommandLine, RefusesUnknownCommandsAndOptions)
{
  const struct {
    std::vector<std::string> arguments;
    const char* complaint;
  } cases[] = {{{}, "mavo-data: a command is missing\nTry 'mavo-data --help'.\n"},
               {{"fly"}, "there is no command 'fly'"},
               {{""}, "there is no command ''"},
               {{"--fly"}, "--fly"},
               {{"check", "--fly", "."}, "--fly"},
               {{"check"}, "mavo-data check: an argument is missing: DIR...\n"},
               {{"check", "--format=xml", "."}, "there is no format 'xml'"},
               {{"check", "--format"}, "--format"}};
  for (const auto& c : cases) {
    const ToolRun refused = run_program("mavo-data", c.arguments);
    EXPECT_EQ(2, refused.status) << c.complaint;
    EXPECT_EQ("", refused.out);
    EXPECT_TRUE(has(refused.err, c.complaint)) << refused.err;
  }
}

TEST(CommandLine, TreatsWordsAfterTwoHyphensAsArguments)
{
  const ToolRun run = run_program("mavo-data", {"check", "--", "--help"});
  EXPECT_EQ(2, run.status);
  EXPECT_TRUE(has(run.err, "cannot read --help: ")) << run.err;
}

TEST(CommandLine, ReportsThatItCannotWriteItsOutput)
{
  for (const char* const redirection : {">/dev/full", ">&-", "| true"}) {
    const std::string script =
        std::string("{ sleep 0.1; \"$TOOL\" --help; echo $? >&2; } ") + redirection;
    const ToolRun run = run_shell("mavo-data", script);
    EXPECT_TRUE(has(run.err, "mavo-data: cannot write to standard output: ")) << run.err;
    EXPECT_TRUE(has(run.err, "\n2\n")) << redirection << run.err;
  }
}

TEST(CommandLine, RunsWithoutAnyStandardStream)
{
  const DataSet set;
  write_good_set(set);
  const ToolRun run =
      run_shell("mavo-data", "\"$TOOL\" check " + set.dir + " <&- 2>&-; echo status $?");
  EXPECT_EQ("status 0\n", run.out);
}
