#pragma once

#include "cli/command.h"
#include "cli/finding-options.h"

// mavo-data verify: checks archives for the publication of data sets.
class VerifyCommand : public Command
{
public:
  void add_options(Glib::OptionGroup& options) override;
  ExitStatus run(const std::vector<std::string>& arguments, Output& out) override;

private:
  FindingOptions finding_options;
};
