#pragma once

#include <glibmm/optiongroup.h>

#include <cstddef>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "cli/exit-status.h"

class Output;

// One command of a tool, such as `check` of mavo-data.
class Command
{
public:
  Command() = default;
  virtual ~Command() = default;
  Command(const Command&) = delete;
  Command& operator=(const Command&) = delete;

  // Adds what the command has besides --help. The values are members of the command.
  virtual void add_options(Glib::OptionGroup& options) = 0;
  // Does the work. `arguments` is what the command line has besides options: as many as the
  // command takes, in the encoding of file names. Throws CouldNotRun.
  virtual ExitStatus run(const std::vector<std::string>& arguments, Output& out) = 0;
};

// A command in the table of its tool.
struct CommandEntry {
  static constexpr std::size_t any_number = std::numeric_limits<std::size_t>::max();

  const char* name;
  const char* usage;   // of the arguments, such as "DIR..."
  const char* summary; // one line that completes "This command ..."
  std::size_t fewest;  // arguments
  std::size_t most;
  std::unique_ptr<Command> (*make)();
};

template<typename Made>
std::unique_ptr<Command> make_command()
{
  return std::make_unique<Made>();
}
