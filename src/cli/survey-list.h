#pragma once

#include "cli/command.h"
#include "cli/data-option.h"

// mavo-surveys list: writes one line for each survey, with the description of the Start page.
class SurveyList : public Command
{
public:
  void add_options(Glib::OptionGroup& options) override;
  ExitStatus run(const std::vector<std::string>& arguments, Output& out) override;

private:
  DataOption data_option;
  Glib::ustring format = "plain";
};
