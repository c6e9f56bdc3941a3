#pragma once

#include <string>
#include <vector>

// What a run of a tool left.
struct ToolRun {
  int status = -1; // of the exit; -1 if a signal ended it
  std::string out; // standard output
  std::string err; // standard error
};

// Runs mavo-data or mavo-surveys, as `tool` says, with these arguments, and waits for its end.
ToolRun run_program(const std::string& tool, const std::vector<std::string>& arguments);

// The same with a shell, for redirections: `$TOOL` in `script` is the path of the tool.
ToolRun run_shell(const std::string& tool, const std::string& script);
