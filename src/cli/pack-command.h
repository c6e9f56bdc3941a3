#pragma once

#include "cli/command.h"
#include "cli/finding-options.h"

// mavo-data pack: writes the archive for the publication of a data set.
class PackCommand : public Command
{
public:
  void add_options(Glib::OptionGroup& options) override;
  ExitStatus run(const std::vector<std::string>& arguments, Output& out) override;

private:
  FindingOptions finding_options;
  std::string archive; // the file to write
  Glib::ustring url;   // the address of the archive on the server; empty for the default
};
