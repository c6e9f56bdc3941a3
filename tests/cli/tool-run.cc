#include "tool-run.h"

#include <glibmm/spawn.h>
#include <sys/wait.h>

namespace {

std::string path_of(const std::string& tool)
{
  return tool == "mavo-data" ? MAVO_DATA_TOOL : MAVO_SURVEYS_TOOL;
}

ToolRun run(const std::vector<std::string>& command)
{
  ToolRun done;
  int status = 0;
  Glib::spawn_sync("", command, Glib::SPAWN_SEARCH_PATH, {}, &done.out, &done.err, &status);
  done.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  return done;
}

} // namespace

ToolRun run_program(const std::string& tool, const std::vector<std::string>& arguments)
{
  std::vector<std::string> command{path_of(tool)};
  command.insert(command.end(), arguments.begin(), arguments.end());
  return run(command);
}

ToolRun run_shell(const std::string& tool, const std::string& script)
{
  return run({"sh", "-c", "TOOL='" + path_of(tool) + "'; " + script});
}
