#include "ui/survey-window.h"

RetCode SurveyWindow::do_open(std::string /*path*/)
{
  return RET_DECLINED;
}

RetCode SurveyWindow::select_and_open_saved_survey()
{
  return RET_DECLINED;
}

void SurveyWindow::on_filedlg_update_preview(Gtk::FileChooserDialog* /*dialog*/,
                                             Gtk::Label* /*preview*/)
{
}

void SurveyWindow::set_survey_is_uploaded() {}
