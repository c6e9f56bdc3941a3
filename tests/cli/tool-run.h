#pragma once

#include <string>
#include <vector>

// The result of a run of a tool.
struct ToolRun {
  int status = -1; // the exit status; -1 if a signal ended the tool
  std::string out; // standard output
  std::string err; // standard error
};

// Runs `tool`, which is mavo-data or mavo-surveys, with these arguments and waits until it ends.
ToolRun run_program(const std::string& tool, const std::vector<std::string>& arguments);

// Runs `script` in a shell, for redirections. `$TOOL` in it is the path of the tool.
ToolRun run_shell(const std::string& tool, const std::string& script);
