#pragma once

#include "data/reference-data.h"

#include <glibmm/optiongroup.h>

#include <string>

// The option --data of the commands that read surveys. It selects the data set in which the
// commands look up ids. The default is the data set that the program would use.
class DataOption
{
public:
  // Adds the option. REQUIRES: this object lives until the options are parsed.
  void add_to(Glib::OptionGroup& options);
  // Returns the tables of the selected set. Throws CouldNotRun if the set cannot be read.
  ReferenceData load() const;

private:
  std::string dir;
};
