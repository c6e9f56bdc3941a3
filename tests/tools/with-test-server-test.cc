#include "core/c-resource.h"
#include "support/test-server.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <filesystem>
#include <string>

namespace fs = std::filesystem;

namespace {

// A build directory whose program uses the server at `host`. In it, a fake cmake records its
// arguments, and fails if the file "fails" exists.
class WithTestServer : public testing::Test
{
public:
  void build_for(const std::string& address)
  {
    host = address;
    scratch.file("build/CMakeCache.txt", "OTHER:STRING=1\nMAVO_WEB_HOST:STRING=" + host + "\n");
    scratch.file("bin/cmake", "#!/bin/sh\necho \"$*\" >>'" + scratch.dir + "cmake.log'\n" +
                                  "[ ! -e '" + scratch.dir +
                                  "fails' ] || "
                                  "{ echo cannot link; exit 1; }\n");
    fs::permissions(scratch.dir + "bin/cmake", fs::perms::owner_all);
    fs::create_directories(scratch.dir + "build/survey-server");
    fs::create_symlink(MAVO_SURVEY_SERVER, scratch.dir + "build/survey-server/survey-server");
  }

  // Runs the command with a server. Returns its status.
  int run(const std::string& command)
  {
    const std::string script = "PATH='" + scratch.dir +
                               "bin':\"$PATH\" '" MAVO_SOURCE_DIR "/tools/with-test-server' '" +
                               scratch.dir + "build' '" + scratch.dir + "own' " + command + " 2>&1";
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
  std::string host;
  std::string output;
};

} // namespace

TEST_F(WithTestServer, RunsACommandWhileTheServerListensAtTheAddressOfTheProgram)
{
  build_for("127.0.0.1:" + std::to_string(free_port()));
  EXPECT_EQ(0, run("test -f '" + scratch.dir + "own/data-files/data-file-info.txt'"));
  EXPECT_EQ("Listening on " + host + "\n", output);
  EXPECT_TRUE(fs::is_directory(scratch.dir + "own/uploads"));
}

TEST_F(WithTestServer, ReturnsTheStatusOfTheCommandAndEndsTheServer)
{
  build_for("127.0.0.1:" + std::to_string(free_port()));
  EXPECT_EQ(7, run("sh -c 'exit 7'"));
  EXPECT_EQ(0, run("true")) << "the port is free again: " << output;
}

TEST_F(WithTestServer, KeepsAChangedDataSet)
{
  build_for("127.0.0.1:" + std::to_string(free_port()));
  scratch.file("own/data-files/data-file-info.txt", "changed");
  EXPECT_EQ(0, run("true"));
  EXPECT_EQ("changed", read_file(scratch.dir + "own/data-files/data-file-info.txt"));
}

TEST_F(WithTestServer, PassesTheDirectoryOfTheProgramToTheCommand)
{
  build_for("127.0.0.1:" + std::to_string(free_port()));
  EXPECT_EQ(0, run("printenv MAVO_APPLICATION_DIR"));
  EXPECT_NE(std::string::npos, output.find(scratch.dir + "build/MAVO-Survey\n")) << output;
}

TEST_F(WithTestServer, TakesAFreePortAndLinksAProgramForItIfTheUsualOneIsInUse)
{
  const TestServer other;
  build_for("127.0.0.1:" + std::to_string(other.port));
  EXPECT_EQ(0, run("printenv MAVO_APPLICATION_DIR"));
  const std::string greeting = "Listening on 127.0.0.1:";
  ASSERT_NE(std::string::npos, output.find(greeting)) << output;
  const std::string port = std::to_string(std::stoi(output.substr(output.find(greeting) + 23)));
  EXPECT_NE(std::to_string(other.port), port);
  EXPECT_NE(std::string::npos, output.find("build/port-" + port + "/MAVO-Survey\n")) << output;
  EXPECT_EQ("-DMAVO_TEST_SERVER_PORT=" + port + " " + scratch.dir + "build\n--build " +
                scratch.dir + "build --target mavo-survey-test-server\n",
            read_file(scratch.dir + "cmake.log"));
}

TEST_F(WithTestServer, DoesNotRunTheCommandIfTheProgramCannotBeLinked)
{
  const TestServer other;
  build_for("127.0.0.1:" + std::to_string(other.port));
  scratch.file("fails", "");
  EXPECT_EQ(1, run("echo started"));
  EXPECT_EQ(std::string::npos, output.find("started")) << output;
  EXPECT_NE(std::string::npos, output.find("cannot link")) << output;
}

TEST_F(WithTestServer, DoesNotRunTheCommandWithoutAServer)
{
  build_for("127.0.0.1:" + std::to_string(free_port()));
  fs::remove(scratch.dir + "build/survey-server/survey-server");
  EXPECT_EQ(1, run("echo started"));
  EXPECT_EQ(std::string::npos, output.find("started")) << output;
}

TEST_F(WithTestServer, SeparatesTheRecordsOfEachRun)
{
  build_for("127.0.0.1:" + std::to_string(free_port()));
  const std::string port = host.substr(host.find(':') + 1);
  const std::string ask = "bash -c 'exec 4<>/dev/tcp/127.0.0.1/" + port +
                          " && printf \"GET /x HTTP/1.0\\r\\n\\r\\n\" >&4 && cat <&4'";
  for (int time = 0; time < 2; ++time)
    EXPECT_EQ(0, run(ask)) << output;
  int runs = 0;
  for (const auto& run : fs::directory_iterator(scratch.dir + "own/runs")) {
    ++runs;
    EXPECT_EQ("GET /x 404\n", read_file(run.path() / "log"));
    EXPECT_TRUE(fs::exists(run.path() / "requests" / "1-elsewhere.txt")) << run.path();
  }
  EXPECT_EQ(2, runs);
}

TEST_F(WithTestServer, RefusesAProgramForAnotherServer)
{
  build_for("www.mavo.example");
  EXPECT_EQ(1, run("echo started"));
  EXPECT_NE(std::string::npos, output.find("does not use a server on this machine")) << output;
}
