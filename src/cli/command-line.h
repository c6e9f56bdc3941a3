#pragma once

#include <vector>

#include "cli/command.h"

// A command-line tool.
struct Tool {
  const char* name;
  const char* summary; // one sentence
  std::vector<CommandEntry> commands;
};

// Does what the command line asks for: a command of the tool, --help or --version. What
// fails is reported on standard error. The result is the exit status.
int run_tool(const Tool& tool, int argc, char** argv);
