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

  // Adds the options of the command except --help. The parser stores their values in members
  // of the command.
  virtual void add_options(Glib::OptionGroup& options) = 0;
  // Does the work and returns whether the command found faults. `arguments` are the words of the
  // command line that are not options, in the encoding of file names. Throws CouldNotRun or
  // another exception if the command cannot run. REQUIRES: the number of arguments is in the
  // range of the CommandEntry.
  virtual ExitStatus run(const std::vector<std::string>& arguments, Output& out) = 0;
};

// A command in the list of its tool.
struct CommandEntry {
  static constexpr std::size_t any_number = std::numeric_limits<std::size_t>::max();

  const char* name;
  const char* usage;   // the arguments, such as "DIR..."
  const char* summary; // one line that completes "This command ..."
  std::size_t fewest;  // the smallest number of arguments
  std::size_t most;    // the largest number of arguments
  std::unique_ptr<Command> (*make)();
};

// Returns a new command of class `Made`, for CommandEntry::make.
template<typename Made>
std::unique_ptr<Command> make_command()
{
  return std::make_unique<Made>();
}
