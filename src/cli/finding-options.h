#pragma once

#include <glibmm/optiongroup.h>

#include "cli/finding-writer.h"

// The options of all commands that report findings: --format and --strict.
class FindingOptions
{
public:
  // Must live until the options have been parsed.
  void add_to(Glib::OptionGroup& options);
  // A writer as the options say. Throws CouldNotRun if there is no such format.
  FindingWriter make_writer(Output& out) const;

private:
  Glib::ustring format = "plain";
  bool strict = false;
};
