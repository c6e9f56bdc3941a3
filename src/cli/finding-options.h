#pragma once

#include <glibmm/optiongroup.h>

#include "cli/finding-writer.h"

// The options of all commands that report findings: --format and --strict.
class FindingOptions
{
public:
  // Adds the options. REQUIRES: this object lives until the options are parsed.
  void add_to(Glib::OptionGroup& options);
  // Returns a writer with the selected format. Throws CouldNotRun if the format is unknown.
  // REQUIRES: `out` outlives the writer.
  FindingWriter make_writer(Output& out) const;

private:
  Glib::ustring format = "plain";
  bool strict = false;
};
