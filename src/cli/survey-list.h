#pragma once

#include "cli/command.h"
#include "cli/data-option.h"

// mavo-surveys list: one line for each survey, as the Start page describes it.
class SurveyList : public Command
{
public:
  void add_options(Glib::OptionGroup& options) override;
  ExitStatus run(const std::vector<std::string>& arguments, Output& out) override;

private:
  DataOption data_option;
  Glib::ustring format = "plain";
};
