#include "support/started-program.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>

namespace fs = std::filesystem;

namespace {

[[noreturn]] void fail(const std::string& what)
{
  std::fprintf(stderr, "%s\n", what.c_str());
  std::exit(2);
}

std::string fresh_directory()
{
  std::string path = fs::temp_directory_path() / "mavo-start-XXXXXX";
  if (!mkdtemp(path.data()))
    fail("Cannot make " + path);
  return path;
}

// Registers programs that open addresses, as on every desktop. Without them, each start of the
// program takes additional time.
void make_desktop(const fs::path& home)
{
  const fs::path applications = home / ".local/share/applications";
  fs::create_directories(applications);
  fs::create_directories(home / ".config");
  std::ofstream(applications / "browser.desktop")
      << "[Desktop Entry]\nType=Application\nName=Browser\nExec=true %u\n";
  std::ofstream(home / ".config/mimeapps.list")
      << "[Default Applications]\nx-scheme-handler/http=browser.desktop\n"
         "x-scheme-handler/https=browser.desktop\nx-scheme-handler/mailto=browser.desktop\n";
}

// Returns this process's environment with another home directory, and without variables that
// would make the program use other directories.
std::vector<std::string> environment_with_home(const std::string& home)
{
  std::vector<std::string> variables{"HOME=" + home, "XDG_CONFIG_HOME=" + home + "/.config"};
  for (char** entry = environ; *entry; ++entry) {
    const std::string variable = *entry;
    const std::string name = variable.substr(0, variable.find('='));
    if (name != "HOME" && name != "XDG_CONFIG_HOME" && name != "GTK_PATH")
      variables.push_back(variable);
  }
  return variables;
}

std::vector<char*> pointers_to(std::vector<std::string>& texts)
{
  std::vector<char*> pointers;
  pointers.reserve(texts.size() + 1);
  for (auto& text : texts)
    pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

pid_t spawn(std::vector<std::string> command, std::vector<std::string> environment)
{
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  for (const int output : {STDOUT_FILENO, STDERR_FILENO})
    posix_spawn_file_actions_addopen(&actions, output, "/dev/null", O_WRONLY, 0);
  pid_t pid = -1;
  const int failure = posix_spawn(&pid, command.front().c_str(), &actions, nullptr,
                                  pointers_to(command).data(), pointers_to(environment).data());
  posix_spawn_file_actions_destroy(&actions);
  if (failure != 0)
    fail("Cannot start " + command.front());
  return pid;
}

// Returns a file of the kernel about a process, or an empty text if the process has ended.
std::string proc_file(pid_t pid, const char* name)
{
  std::ifstream file("/proc/" + std::to_string(pid) + "/" + name);
  return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace

StartedProgram::StartedProgram(std::vector<std::string> command) : home(fresh_directory())
{
  make_desktop(home);
  started = std::chrono::steady_clock::now();
  pid = spawn(std::move(command), environment_with_home(home));
}

StartedProgram::~StartedProgram()
{
  kill(pid, SIGKILL);
  waitpid(pid, nullptr, 0);
  std::error_code ignored;
  fs::remove_all(home, ignored);
}

// The program is idle if it sleeps and has neither run nor waited for a processor for a while.
void StartedProgram::wait_until_idle() const
{
  constexpr auto a_while = std::chrono::milliseconds(150);
  constexpr int patience = 200;
  std::string before;
  for (int i = 0; i < patience; ++i) {
    const std::string now = proc_file(pid, "schedstat");
    const bool is_asleep = proc_file(pid, "stat").find(") S ") != std::string::npos;
    if (is_asleep && now == before)
      return;
    before = now;
    std::this_thread::sleep_for(a_while);
  }
  fail("The started program does not become idle");
}

double StartedProgram::peak_bytes() const
{
  const std::string status = proc_file(pid, "status");
  const std::string label = "VmHWM:";
  const auto found = status.find(label);
  if (found == std::string::npos)
    fail("The started program has ended unexpectedly");
  return std::stod(status.substr(found + label.size())) * 1024; // the file has KiB
}
