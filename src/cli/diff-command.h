#pragma once

#include "cli/command.h"
#include "cli/finding-options.h"

// mavo-data diff: shows the differences that members notice when a new data set replaces an
// old one.
class DiffCommand : public Command
{
public:
  void add_options(Glib::OptionGroup& options) override;
  ExitStatus run(const std::vector<std::string>& arguments, Output& out) override;

private:
  FindingOptions finding_options;
  std::vector<std::string> surveys; // files and directories of saved surveys; can be empty
};
