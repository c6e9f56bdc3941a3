#pragma once

#include "cli/command.h"
#include "cli/finding-options.h"

// mavo-surveys restore: puts the files of a backup back into a store. The whole archive is
// checked before the first file is written; a file that is there stays as it is.
class StoreRestore : public Command
{
public:
  void add_options(Glib::OptionGroup& options) override;
  ExitStatus run(const std::vector<std::string>& arguments, Output& out) override;

private:
  FindingOptions finding_options;
};

// Throws CouldNotRun if the archive at `path` could write outside of a store or is damaged:
// it has an entry with an absolute name or one with "." or "..", a link or a device, or
// one whose bytes are not those that were packed.
void check_backup(const std::string& path);
