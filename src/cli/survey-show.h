#pragma once

#include "cli/command.h"
#include "cli/data-option.h"

// mavo-surveys show: shows a survey as text or as a page in a browser.
class SurveyShow : public Command
{
public:
  void add_options(Glib::OptionGroup& options) override;
  ExitStatus run(const std::vector<std::string>& arguments, Output& out) override;

private:
  // Returns the page of the survey, or a page that reports a failure. Sets `status`.
  std::string page_of(const std::string& path, ExitStatus& status) const;

  DataOption data_option;
  bool as_html = false;
  bool opens = false;
};
