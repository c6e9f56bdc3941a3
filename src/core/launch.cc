#include "core/launch.h"

#include "core/number.h"
#include "core/report.h"
#include "core/text.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

void print_start(int argc, char** argv)
{
  printf("init_gtk_stuff(): argc = %d, argv =\n", argc);
  for (int i = 0; i < argc; ++i)
    printf("    argv[%d] = \"%s\"\n", i, argv[i]);
  puts("Environment:");
  for (char** entry = environ; entry && *entry; ++entry)
    printf("    \"%s\"\n", *entry);
  puts("End.");
}

std::string working_directory()
{
  std::string buffer(PATH_MAX, '\0');
  return getcwd(buffer.data(), buffer.size()) ? buffer.c_str() : std::string();
}

// Returns the absolute path of the directory above the executable's directory. If argv[0] is a
// relative path, also changes the working directory to that directory. If this fails, prints
// the reason and returns an empty path.
std::string find_install_dir(const LaunchPath& path, const char* argv0)
{
  if (begins_with(path.dir, "/")) {
    printf("started with %s, reduced to %s (%s)\n", argv0, path.dir.c_str(),
           path.exec_name.c_str());
    return path.dir;
  }
  if (path.has_dir && chdir(path.dir.c_str()) != 0) {
    printf("Failed to chdir(\"%s\"): %d %s\n", path.dir.c_str(), errno, strerror(errno));
    return {};
  }
  std::string dir = working_directory();
  if (dir.empty()) {
    printf("Failed to getcwd() after chdir(\"%s\"): %d %s\n", path.dir.c_str(), errno,
           strerror(errno));
    return {};
  }
  printf("started with %s, deduced %s (%s)\n", argv0, dir.c_str(), path.exec_name.c_str());
  return dir;
}

// Returns only if the script cannot be started.
void exec_launch_script(std::vector<std::string> command)
{
  std::vector<char*> argv;
  argv.reserve(command.size() + 1);
  for (auto& argument : command)
    argv.push_back(argument.data());
  argv.push_back(nullptr);
  printf("exec(\"%s\", [\"%s\", \"%s\", \"%s\", ...]\n", argv[0], argv[0], argv[1], argv[2]);
  execv(argv[0], argv.data());
  printf("FAILED to exec: %d = %s\n", errno, strerror(errno));
}

} // namespace

LaunchPath split_launch_path(const std::string& argv0)
{
  LaunchPath path{argv0, argv0, false};
  const std::size_t last = argv0.rfind('/');
  if (last == std::string::npos)
    return path;
  path.exec_name = argv0.substr(last + 1);
  const std::size_t second = last == 0 ? std::string::npos : argv0.rfind('/', last - 1);
  if (second != std::string::npos) {
    path.dir = second == 0 ? "/" : argv0.substr(0, second); // the root directory is absolute
    path.has_dir = true;
  }
  return path;
}

std::vector<std::string> launch_script_command(const std::string& dir, const std::string& exec_name,
                                               const std::vector<std::string>& user_args)
{
  const std::string executable = (dir == "/" ? "" : dir) + "/MacOS/" + exec_name;
  std::vector<std::string> command{executable + "-env-setup.sh", "--exec-name", executable};
  command.insert(command.end(), user_args.begin(), user_args.end());
  return command;
}

void init_gtk_stuff(int argc, char** argv)
{
  print_start(argc, argv);
  if (argc < 1)
    return;
  const LaunchPath path = split_launch_path(argv[0]);
  const std::string dir = find_install_dir(path, argv[0]);
  if (dir.empty())
    return;
  if (getenv("GTK_PATH")) {
    puts("Have GTK_PATH!  Proceeding...");
    return;
  }
  exec_launch_script(launch_script_command(dir, path.exec_name, {argv + 1, argv + argc}));
}

void take_debug_argument(int& argc, char** argv)
{
  if (argc < 2 || strncmp(argv[1], "-d", 2) != 0)
    return;
  debug_level = to_int(argv[1] + 2);
  printf("Debug level %d\n", debug_level);
  std::copy(argv + 2, argv + argc + 1, argv + 1); // includes the null pointer at the end
  --argc;
}
