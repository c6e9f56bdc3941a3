#pragma once

#include "cli/command.h"
#include "cli/finding-options.h"

// mavo-data check: reports every fault of data sets.
class DataCheck : public Command
{
public:
  void add_options(Glib::OptionGroup& options) override;
  ExitStatus run(const std::vector<std::string>& arguments, Output& out) override;

private:
  FindingOptions finding_options;
};
