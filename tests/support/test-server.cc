#include "support/test-server.h"

#include <fcntl.h>
#include <glibmm/spawn.h>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

// Ends the server if the test dies.
void end_with_parent()
{
  prctl(PR_SET_PDEATHSIG, SIGTERM);
}

} // namespace

TestServer::TestServer(const std::vector<std::string>& options)
    : uploads(scratch.dir + "uploads/"),
      data(scratch.dir + "data-files/"),
      requests(scratch.dir + "requests/")
{
  DataSet offered;
  offered.minimal();
  fs::copy(offered.dir, data);
  fs::create_directory(uploads);
  fs::create_directory(requests);
  start(options);
}

TestServer::~TestServer()
{
  stop();
  close(output);
}

std::string TestServer::address() const
{
  return "http://127.0.0.1:" + std::to_string(port);
}

std::vector<std::string> TestServer::log() const
{
  char block[4096];
  for (ssize_t size = 0; (size = read(output, block, sizeof block)) > 0;)
    unfinished.append(block, static_cast<std::size_t>(size));
  for (std::size_t end = 0; (end = unfinished.find('\n')) != std::string::npos;) {
    lines.push_back(unfinished.substr(0, end));
    unfinished.erase(0, end + 1);
  }
  return lines;
}

void TestServer::stop()
{
  if (child == 0)
    return;
  kill(child, SIGTERM);
  int status = 0;
  waitpid(child, &status, 0);
  child = 0;
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "the server ended with " << status;
}

void TestServer::start(const std::vector<std::string>& options)
{
  std::vector<std::string> command = {MAVO_SURVEY_SERVER, "--uploads", uploads, "--data", data,
                                      "--requests",       requests};
  command.insert(command.end(), options.begin(), options.end());
  Glib::spawn_async_with_pipes("", command, Glib::SPAWN_DO_NOT_REAP_CHILD,
                               sigc::ptr_fun(&end_with_parent), &child, nullptr, &output, nullptr);

  const std::string greeting = "Listening on 127.0.0.1:";
  const std::string line = read_line();
  EXPECT_EQ(greeting, line.substr(0, greeting.size())) << "the server does not start";
  port = line.size() > greeting.size() ? std::stoi(line.substr(greeting.size())) : 0;
  // From now on, reads of the log do not block. The pipe is large enough for long tests.
  fcntl(output, F_SETFL, O_NONBLOCK);
  fcntl(output, F_SETPIPE_SZ, 1 << 20);
}

// Waits for one line. Returns the incomplete line if the server ends.
std::string TestServer::read_line() const
{
  std::string line;
  for (char c = 0; read(output, &c, 1) == 1 && c != '\n';)
    line += c;
  return line;
}
