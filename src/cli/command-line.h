#pragma once

#include <vector>

#include "cli/command.h"

// A command-line tool.
struct Tool {
  const char* name;
  const char* summary; // one sentence
  std::vector<CommandEntry> commands;
};

// Runs the command line: a command of the tool, --help or --version. Reports failures on
// standard error. Returns the exit status.
int run_tool(const Tool& tool, int argc, char** argv);
