#pragma once

#include <string>
#include <vector>

// Where a program of the bundle's form (<dir>/MacOS/<exec_name>) was started
// from, as far as its argv[0] tells.
struct LaunchPath {
  std::string dir;       // the part before the second-to-last '/', "/" if that is empty;
                         // all of argv[0] without one
  std::string exec_name; // what follows the last '/'; all of argv[0] without one
  bool has_dir = false;  // there is a second-to-last '/'
};
LaunchPath split_launch_path(const std::string& argv0);

// The command that starts the launch script beside the executable: the script,
// "--exec-name", the executable, then the user's arguments.
std::vector<std::string> launch_script_command(const std::string& dir, const std::string& exec_name,
                                               const std::vector<std::string>& user_args);

// Replaces the process by the launch script, unless GTK_PATH says that the
// script has already run. Returns if there is nothing to do or the script
// cannot be started; the reason then stands on standard output.
void init_gtk_stuff(int argc, char** argv);

// The level of a "-d<n>" in argv[1], taken out of argv: sets debug_level and
// says so on standard output. Any other first argument is left alone.
void take_debug_argument(int& argc, char** argv);
