#include "core/c-resource.h"
#include "support/test-server.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <filesystem>
#include <string>

namespace fs = std::filesystem;

namespace {

// A build directory whose program looks for its server at `host`.
class WithTestServer : public testing::Test
{
public:
  void build_for(const std::string& host) const
  {
    scratch.file("build/CMakeCache.txt", "OTHER:STRING=1\nMAVO_WEB_HOST:STRING=" + host + "\n");
    fs::create_directories(scratch.dir + "build/survey-server");
    fs::create_symlink(MAVO_SURVEY_SERVER, scratch.dir + "build/survey-server/survey-server");
  }

  // Runs the command with a server; gives its status.
  int run(const std::string& command)
  {
    const std::string script = "'" MAVO_SOURCE_DIR "/tools/with-test-server' '" + scratch.dir +
                               "build' '" + scratch.dir + "own' " + command + " 2>&1";
    Pipe pipe(popen(script.c_str(), "r"));
    output.clear();
    for (int c = 0; (c = std::fgetc(pipe.get())) != EOF;)
      output += static_cast<char>(c);
    return WEXITSTATUS(pclose(pipe.release()));
  }

  static int free_port()
  {
    TestServer server;
    server.stop();
    return server.port;
  }

  const DataSet scratch;
  std::string output;
};

} // namespace

TEST_F(WithTestServer, RunsACommandWhileTheServerListensWhereItsProgramLooks)
{
  const std::string host = "127.0.0.1:" + std::to_string(free_port());
  build_for(host);
  EXPECT_EQ(0, run("test -f '" + scratch.dir + "own/data-files/data-file-info.txt'"));
  EXPECT_EQ("Listening on " + host + "\n", output);
  EXPECT_TRUE(fs::is_directory(scratch.dir + "own/uploads"));
}

TEST_F(WithTestServer, GivesTheStatusOfTheCommandAndEndsTheServer)
{
  build_for("127.0.0.1:" + std::to_string(free_port()));
  EXPECT_EQ(7, run("sh -c 'exit 7'"));
  EXPECT_EQ(0, run("true")) << "the port is free again: " << output;
}

TEST_F(WithTestServer, KeepsTheDataSetThatWasChanged)
{
  build_for("127.0.0.1:" + std::to_string(free_port()));
  scratch.file("own/data-files/data-file-info.txt", "changed");
  EXPECT_EQ(0, run("true"));
  EXPECT_EQ("changed", read_file(scratch.dir + "own/data-files/data-file-info.txt"));
}

TEST_F(WithTestServer, RunsNothingWithoutAServer)
{
  const TestServer other;
  build_for("127.0.0.1:" + std::to_string(other.port));
  EXPECT_EQ(1, run("echo started"));
  EXPECT_EQ(std::string::npos, output.find("started")) << output;
}

TEST_F(WithTestServer, RefusesAProgramThatLooksElsewhere)
{
  build_for("www.mavo.example");
  EXPECT_EQ(1, run("echo started"));
  EXPECT_NE(std::string::npos, output.find("does not look for a server on this machine")) << output;
}
