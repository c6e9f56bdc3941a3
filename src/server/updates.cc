#include "ui/survey-window.h"

void SurveyWindow::manual_check_for_updates() {}

RetCode SurveyWindow::check_for_updates(const char*, ResponseCode)
{
  return RET_DECLINED;
}
