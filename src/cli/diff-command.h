#pragma once

#include "cli/command.h"
#include "cli/finding-options.h"

// mavo-data diff: shows what members notice when a new data set takes the place of an old
// one.
class DiffCommand : public Command
{
public:
  void add_options(Glib::OptionGroup& options) override;
  ExitStatus run(const std::vector<std::string>& arguments, Output& out) override;

private:
  FindingOptions finding_options;
  std::vector<std::string> surveys; // files and directories; empty: none are looked at
};
