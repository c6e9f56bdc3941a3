#pragma once

#include "cli/command.h"
#include "cli/finding-options.h"

// mavo-surveys backup: puts all files of a store into a zip archive and reads them back
// from it. Surveys that cannot be read are backed up and reported.
class StoreBackup : public Command
{
public:
  void add_options(Glib::OptionGroup& options) override;
  ExitStatus run(const std::vector<std::string>& arguments, Output& out) override;

private:
  FindingOptions finding_options;
  std::string output_path;
};
