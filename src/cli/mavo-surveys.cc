// The tool of those who receive surveys.

#include "cli/command-line.h"

int main(int argc, char** argv)
{
  const Tool tool{"mavo-surveys", "Reads, exports and backs up surveys of MAVO-Survey.", {}};
  return run_tool(tool, argc, argv);
}
