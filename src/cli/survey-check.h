#pragma once

#include "cli/command.h"
#include "cli/data-option.h"
#include "cli/finding-options.h"

// mavo-surveys check: validates surveys against the schema of their format and applies the
// checks of the Confirmation page.
class SurveyCheck : public Command
{
public:
  void add_options(Glib::OptionGroup& options) override;
  ExitStatus run(const std::vector<std::string>& arguments, Output& out) override;

private:
  DataOption data_option;
  FindingOptions finding_options;
};
