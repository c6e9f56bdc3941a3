// The command-line tool for receivers of surveys.

#include "cli/command-line.h"
#include "cli/store-backup.h"
#include "cli/store-restore.h"
#include "cli/survey-check.h"
#include "cli/survey-export.h"
#include "cli/survey-list.h"
#include "cli/survey-show.h"

int main(int argc, char** argv)
{
  constexpr auto any = CommandEntry::any_number;
  const Tool tool{
      "mavo-surveys",
      "Reads, exports and backs up surveys of MAVO-Survey.",
      {
          {"list", "[FILE|DIR...]", "lists surveys with a description", 0, any,
           &make_command<SurveyList>},
          {"check", "[FILE|DIR...]", "reports what is wrong with surveys", 0, any,
           &make_command<SurveyCheck>},
          {"show", "FILE", "shows a survey as text or as a page", 1, 1, &make_command<SurveyShow>},
          {"export", "[FILE|DIR...]", "writes the sightings of surveys as one table", 0, any,
           &make_command<SurveyExport>},
          {"backup", "[DIR]", "packs a store into a zip archive", 0, 1, &make_command<StoreBackup>},
          {"restore", "FILE [DIR]", "unpacks a backup into a store", 1, 2,
           &make_command<StoreRestore>},
      }};
  return run_tool(tool, argc, argv);
}
