#pragma once

#include "data/reference-data.h"

#include <glibmm/optiongroup.h>

#include <string>

// The option --data of the commands that read surveys: the data set that gives their ids a
// meaning. Without it that is the set which the program would use.
class DataOption
{
public:
  // Must live until the options have been parsed.
  void add_to(Glib::OptionGroup& options);
  // Throws CouldNotRun if the set cannot be read.
  ReferenceData load() const;

private:
  std::string dir;
};
