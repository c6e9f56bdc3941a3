#include "cli/store-guard.h"

#include "store/file-identity.h"
#include "store/survey-files.h"

#include "cli/could-not-run.h"
#include "cli/survey-paths.h"

void keep_out_of_store(const std::string& path)
{
  const bool is_inside = leads_into(path, default_survey_root()) || !state_of(path).empty();
  if (!path.empty() && is_inside)
    throw CouldNotRun(path + " is in the store of surveys; choose another directory");
}
