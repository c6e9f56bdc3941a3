// The tool of those who publish reference data.

#include "cli/command-line.h"
#include "cli/data-check.h"

int main(int argc, char** argv)
{
  const Tool tool{"mavo-data",
                  "Checks and packs the reference data of MAVO-Survey.",
                  {
                      {"check", "DIR...", "reports every fault of data sets", 1,
                       CommandEntry::any_number, &make_command<DataCheck>},
                  }};
  return run_tool(tool, argc, argv);
}
