#pragma once

#include "cli/command.h"
#include "cli/finding-options.h"

// mavo-surveys backup: writes all files of a store to a zip archive and verifies the archive.
// It also backs up unreadable surveys, and reports them.
class StoreBackup : public Command
{
public:
  void add_options(Glib::OptionGroup& options) override;
  ExitStatus run(const std::vector<std::string>& arguments, Output& out) override;

private:
  FindingOptions finding_options;
  std::string output_path;
};
