#include "core/report-dialog.h"

#include "core/message-dialog.h"
#include "core/report-presenter.h"

namespace {

void show_report(const Report& report)
{
  Message dialog;
  dialog.title = report.title;
  dialog.text = report.text;
  dialog.type = report.is_fatal ? Gtk::MESSAGE_ERROR : Gtk::MESSAGE_WARNING;
  dialog.standard_buttons = report.is_fatal ? Gtk::BUTTONS_CLOSE : Gtk::BUTTONS_OK;
  run_message(dialog);
}

} // namespace

void install_report_dialog()
{
  set_report_presenter(&show_report);
}
