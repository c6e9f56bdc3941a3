#include "ui/survey-window.h"

RetCode SurveyWindow::do_upload_file(const std::string&)
{
  return RET_DECLINED;
}

void SurveyWindow::do_upload_single(const std::string&) {}

void SurveyWindow::do_upload_all_ready(const std::vector<std::string>&) {}

void SurveyWindow::on_upload_button() {}

void SurveyWindow::on_action_FileUploadThis(const std::string&) {}

void SurveyWindow::on_action_FileUploadAll(const std::string&) {}
