#pragma once

#include <string>
#include <vector>

// The parts of argv[0] of a program in an application directory
// (<dir>/MacOS/<exec_name>).
struct LaunchPath {
  std::string dir;       // the part before the second-to-last '/', or "/" if that part is
                         // empty; all of argv[0] if there is no second-to-last '/'
  std::string exec_name; // the part after the last '/'; all of argv[0] if there is no '/'
  bool has_dir = false;  // whether there is a second-to-last '/'
};
// Splits `argv0` into these parts. Does not look at the file system.
LaunchPath split_launch_path(const std::string& argv0);

// Returns the command line that starts the launch script beside the executable: the
// script, "--exec-name", the executable, then the user's arguments.
std::vector<std::string> launch_script_command(const std::string& dir, const std::string& exec_name,
                                               const std::vector<std::string>& user_args);

// Replaces the process with the launch script, unless GTK_PATH is set, which means that
// the script has already run. Also returns if the script cannot be started; then it has
// printed the reason to standard output. If argv[0] is a relative path with a directory for
// the application, changes the working directory to that directory.
void init_gtk_stuff(int argc, char** argv);

// Reads the trace level from "-d<n>" in argv[1], removes that argument, sets debug_level
// and prints the level to standard output. Does nothing if argv[1] is something else.
void take_debug_argument(int& argc, char** argv);
