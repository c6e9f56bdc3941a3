#include "core/c-resource.h"
#include "support/test-server.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <string>

namespace {

struct Outcome {
  int status; // the exit status
  std::string output;
};

Outcome run_server(const std::string& arguments)
{
  Pipe pipe(popen((MAVO_SURVEY_SERVER " " + arguments + " 2>&1").c_str(), "r"));
  std::string output;
  for (int c = 0; (c = std::fgetc(pipe.get())) != EOF;)
    output += static_cast<char>(c);
  return {WEXITSTATUS(pclose(pipe.release())), output};
}

} // namespace

TEST(SurveyServerCommandLine, ReportsWhatItCannotUnderstand)
{
  const struct {
    const char* arguments;
    const char* complaint;
  } cases[] = {
      {"", "--uploads and --data are needed"},
      {"--uploads /tmp", "--uploads and --data are needed"},
      {"--uploads /tmp --data /tmp --unknown", "--unknown"},
      {"--uploads /tmp --data /tmp left-over", "without an option"},
      {"--uploads /tmp --data /tmp --port 65536", "--port"},
      {"--uploads /tmp --data /tmp --port -1", "--port"},
      {"--uploads /tmp --data /tmp --port x", "x"},
      {"--uploads /tmp --data /tmp --upload sometimes", "unknown word \"sometimes\""},
      {"--uploads /tmp --data /tmp --upload ''", "unknown word \"\""},
      {"--uploads /tmp --data /tmp --upload ok,", "unknown word \"\""},
      {"--uploads /tmp --data /tmp --upload how=so", "unknown word \"how=\""},
      {"--uploads /tmp --data /tmp --upload status=x", "\"x\" is not a number"},
      {"--uploads /tmp --data /tmp --upload status=99", "\"99\" is not a status"},
      {"--uploads /tmp --data /tmp --upload status=1000", "\"1000\" is not a status"},
      {"--uploads /tmp --data /tmp --upload delay=-1", "\"-1\" is not a number"},
      {"--uploads /tmp --data /tmp --upload delay=1234567890", "is not a number"},
      {"--uploads /tmp --data /tmp --upload header=X", "NAME:VALUE"},
      {"--uploads /tmp --data /tmp --upload header=:x", "NAME:VALUE"},
      {"--uploads /tmp --data /tmp --upload close=after", "before or middle"},
      {"--uploads /tmp --data /tmp --archive damaged=some", "damaged= takes"},
      {"--uploads /tmp --data /tmp --upload damaged=empty", "only the archive"},
  };
  for (const auto& c : cases) {
    const Outcome outcome = run_server(c.arguments);
    EXPECT_EQ(2, outcome.status) << c.arguments;
    EXPECT_NE(std::string::npos, outcome.output.find(c.complaint)) << outcome.output;
  }
}

TEST(SurveyServerCommandLine, ReportsThatItsPortIsInUse)
{
  const TestServer first;
  const Outcome outcome =
      run_server("--uploads /tmp --data /tmp --port " + std::to_string(first.port));
  EXPECT_EQ(1, outcome.status);
  EXPECT_NE(std::string::npos, outcome.output.find("cannot listen")) << outcome.output;
}

TEST(SurveyServerCommandLine, ListsAllItsOptionsAndWords)
{
  const Outcome outcome = run_server("--help");
  EXPECT_EQ(0, outcome.status);
  for (const char* word :
       {"--port",     "--uploads", "--data",       "--requests",   "--app-version", "--app-url",
        "--platform", "--upload=", "--app-query",  "--data-query", "--archive",     "status=",
        "without=",   "header=",   "error=",       "delay=",       "close=before",  "close=middle",
        "garbage",    "trickle",   "long-header=", "redirect=",    "type=",         "damaged="})
    EXPECT_NE(std::string::npos, outcome.output.find(word)) << word;
}
