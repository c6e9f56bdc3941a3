#include "ui/survey-window.h"

bool SurveyWindow::maybe_delete_survey(const std::string& /*path*/)
{
  return false;
}

void SurveyWindow::on_action_FileDelete(const std::string& /*action*/) {}
