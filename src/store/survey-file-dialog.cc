#include "store/survey-file-dialog.h"

#include "core/message-dialog.h"
#include "core/widget-helpers.h"
#include "ui/survey-window.h"

#include <gdkmm/pixbuf.h>
#include <gtkmm/filefilter.h>

SurveyFileDialog::SurveyFileDialog(SurveyWindow& window, const Glib::ustring& title,
                                   const std::string& directory, const Gtk::StockID& action)
    : Gtk::FileChooserDialog(window, title, Gtk::FILE_CHOOSER_ACTION_OPEN)
{
  const auto icons = usable_icons();
  if (!icons.empty())
    set_icon_list(icons);
  set_local_only(true);
  set_current_folder(directory);
  add_button(Gtk::Stock::CANCEL, Gtk::RESPONSE_CANCEL);
  add_button(action, Gtk::RESPONSE_OK);
  set_default_response(Gtk::RESPONSE_OK);

  preview.set_line_wrap(true);
  break_anywhere(preview);
  set_extra_widget(preview);
  signal_update_preview().connect(
      sigc::bind(sigc::mem_fun(window, &SurveyWindow::on_filedlg_update_preview), this, &preview));
}

void SurveyFileDialog::offer(const std::vector<Glib::ustring>& patterns)
{
  const auto filter = Gtk::FileFilter::create();
  filter->set_name("MAVO survey files");
  for (const auto& pattern : patterns)
    filter->add_pattern(pattern);
  add_filter(filter);
}
