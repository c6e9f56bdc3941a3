#pragma once

#include "cli/command.h"
#include "cli/finding-options.h"

// mavo-surveys restore: restores the files of a backup to a store. It checks the complete
// archive before it writes the first file. It does not change existing files.
class StoreRestore : public Command
{
public:
  void add_options(Glib::OptionGroup& options) override;
  ExitStatus run(const std::vector<std::string>& arguments, Output& out) override;

private:
  FindingOptions finding_options;
};

// Throws CouldNotRun if the archive at `path` is damaged or could write outside of a store: if
// the checksum of an entry is wrong, if a name is absolute or contains "." or "..", or if an
// entry is a link or a device.
void check_backup(const std::string& path);
