// The command-line tool for publishers of reference data.

#include "cli/command-line.h"
#include "cli/data-check.h"
#include "cli/diff-command.h"
#include "cli/pack-command.h"
#include "cli/verify-command.h"

int main(int argc, char** argv)
{
  const Tool tool{"mavo-data",
                  "Checks and packs the reference data of MAVO-Survey.",
                  {
                      {"check", "DIR...", "reports every fault of data sets", 1,
                       CommandEntry::any_number, &make_command<DataCheck>},
                      {"diff", "OLD NEW", "shows what members notice when NEW replaces OLD", 2, 2,
                       &make_command<DiffCommand>},
                      {"pack", "DIR", "packs a data set into an archive for the server", 1, 1,
                       &make_command<PackCommand>},
                      {"verify", "FILE...", "checks archives of data sets", 1,
                       CommandEntry::any_number, &make_command<VerifyCommand>},
                  }};
  return run_tool(tool, argc, argv);
}
