#include "cli/command-line.h"

#include "core/report.h"
#include "core/thrown-text.h"
#include "core/version.h"

#include <giomm/init.h>
#include <glibmm/init.h>
#include <glibmm/optioncontext.h>
#include <glibmm/utility.h>

#include <algorithm>
#include <clocale>
#include <cstdio>

#include "cli/could-not-run.h"
#include "cli/option-entry.h"
#include "cli/output.h"

namespace {

// An invalid command line.
class BadUsage : public CouldNotRun
{
  using CouldNotRun::CouldNotRun;
};

// The options and arguments of a command line. This class replaces the library's --help, which
// ends the process without checking whether the help was written.
class Arguments
{
public:
  Arguments(const std::string& called, const Glib::ustring& usage)
      : context(usage), options(called, "", "")
  {
    g_set_prgname(called.c_str());
    context.set_help_enabled(false);
    options.add_entry(option_entry("help", "print this help and exit", nullptr, 'h'), wants_help);
    Glib::OptionEntry rest;
    rest.set_long_name(G_OPTION_REMAINING);
    options.add_entry_filename(rest, others);
  }

  void parse(int argc, char** argv)
  {
    context.set_main_group(options);
    try {
      context.parse(argc, argv);
    } catch (const Glib::Error& failure) {
      throw BadUsage(failure.what());
    }
  }
  std::string help() const { return context.get_help().raw(); }

  Glib::OptionContext context;
  Glib::OptionGroup options;
  bool wants_help = false;
  std::vector<std::string> others; // words that are not options
};

std::string list_commands(const Tool& tool)
{
  std::size_t width = 0;
  const auto call = [](const CommandEntry& entry) {
    return std::string(entry.name) + " " + entry.usage;
  };
  for (const CommandEntry& entry : tool.commands)
    width = std::max(width, call(entry).size());
  std::string list = "Commands:";
  for (const CommandEntry& entry : tool.commands) {
    const std::string called = call(entry);
    list += "\n  " + called + std::string(width - called.size() + 2, ' ') + entry.summary;
  }
  return list;
}

// Runs a command line without a command.
ExitStatus run_plain(const Tool& tool, int argc, char** argv, Output& out)
{
  Arguments arguments(tool.name, "COMMAND [ARGUMENT...]");
  bool wants_version = false;
  arguments.options.add_entry(option_entry("version", "print the version and exit"), wants_version);
  arguments.context.set_summary(tool.summary);
  arguments.context.set_description(list_commands(tool) + "\n\n'" + tool.name +
                                    " COMMAND --help' explains a command.");
  arguments.parse(argc, argv);
  if (arguments.wants_help)
    out.write(arguments.help());
  else if (wants_version)
    out.write(std::string(tool.name) + " " + BuildInfo::version_str + "\n");
  else
    throw BadUsage("a command is missing");
  return ExitStatus::FINE;
}

void check_number(const CommandEntry& entry, std::size_t number)
{
  if (number < entry.fewest)
    throw BadUsage("an argument is missing: " + std::string(entry.usage));
  if (number > entry.most)
    throw BadUsage("there are too many arguments");
}

// Runs a command. `argv` begins with its name.
ExitStatus run_command(const CommandEntry& entry, int argc, char** argv, Output& out)
{
  Arguments arguments(g_get_prgname() + std::string(" ") + entry.name, entry.usage);
  arguments.context.set_summary(Glib::ustring("This command ") + entry.summary + ".");
  const auto command = entry.make();
  command->add_options(arguments.options);
  arguments.parse(argc, argv);
  if (arguments.wants_help) {
    out.write(arguments.help());
    return ExitStatus::FINE;
  }
  check_number(entry, arguments.others.size());
  return command->run(arguments.others, out);
}

ExitStatus dispatch(const Tool& tool, int argc, char** argv, Output& out)
{
  g_set_prgname(tool.name);
  if (argc < 2 || *argv[1] == '-')
    return run_plain(tool, argc, argv, out);
  const auto entry =
      std::find_if(tool.commands.begin(), tool.commands.end(),
                   [&](const CommandEntry& known) { return std::string(known.name) == argv[1]; });
  if (entry == tool.commands.end())
    throw BadUsage("there is no command '" + std::string(argv[1]) + "'");
  return run_command(*entry, argc - 1, argv + 1, out);
}

void say(const std::string& text)
{
  std::fprintf(stderr, "%s: %s\n", g_get_prgname(), text.c_str());
}

// Prints the current exception to standard error. REQUIRES: the caller is in a catch block.
void report_failure()
{
  try {
    throw;
  } catch (const BadUsage& failure) {
    say(failure.what());
    std::fprintf(stderr, "Try '%s --help'.\n", g_get_prgname());
  } catch (...) {
    say(thrown_text("unknown failure", "failure without a text").raw());
  }
}

} // namespace

int run_tool(const Tool& tool, int argc, char** argv)
{
  // Only the character set depends on the user's locale. The sort order must not depend on it.
  std::setlocale(LC_CTYPE, "");
  Glib::init();
  Gio::init();
  debug_level = -2;
  ExitStatus status = ExitStatus::COULD_NOT_RUN;
  try {
    Output out;
    status = dispatch(tool, argc, argv, out);
    out.flush();
  } catch (...) {
    status = ExitStatus::COULD_NOT_RUN;
    report_failure();
  }
  return static_cast<int>(status);
}
