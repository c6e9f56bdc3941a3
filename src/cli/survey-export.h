#pragma once

#include "cli/command.h"
#include "cli/data-option.h"

// mavo-surveys export: writes surveys as a table or as a Darwin Core Archive.
class SurveyExport : public Command
{
public:
  void add_options(Glib::OptionGroup& options) override;
  ExitStatus run(const std::vector<std::string>& arguments, Output& out) override;

private:
  DataOption data_option;
  Glib::ustring format;
  std::string output_path;
};
