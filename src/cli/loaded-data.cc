#include "cli/loaded-data.h"

#include "data/data-check.h"

#include "cli/could-not-run.h"

// The readers end the process if the metadata have certain faults. So check these first.
ReferenceData load_data_set(const std::string& dir)
{
  const std::string place = dir + "/";
  ReferenceData data;
  if (data_timestamp(place).empty() || read_data_set(place, data) != RET_SUCCESS)
    throw CouldNotRun("cannot read the data set in " + dir);
  return data;
}
