#include "store/survey-file-dialog.h"

#include "core/message-dialog.h"
#include "core/widget-helpers.h"
#include "ui/survey-window.h"

#include <gdkmm/pixbuf.h>
#include <gtkmm/filefilter.h>

namespace {

// Limits the size of the dialog to the room on the screen. The toolkit derives the size of the
// dialog only from the size of the text.
void keep_on_screen(Gtk::Window& dialog, const Size& room)
{
  Gdk::Geometry largest{};
  largest.max_width = room.width;
  largest.max_height = room.height;
  dialog.set_geometry_hints(dialog, largest, Gdk::HINT_MAX_SIZE);
}

// Narrows the search entry of the toolkit's dialog. Its default width of 45 letters makes the
// dialog wider than a small screen if the text is large.
void narrow_entries(GtkWidget* widget, gpointer)
{
  constexpr int letters = 20;
  if (GTK_IS_ENTRY(widget))
    gtk_entry_set_width_chars(GTK_ENTRY(widget), letters);
  else if (GTK_IS_CONTAINER(widget))
    gtk_container_forall(GTK_CONTAINER(widget), narrow_entries, nullptr);
}

} // namespace

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
  narrow_entries(GTK_WIDGET(gobj()), nullptr);
  keep_on_screen(*this, room_on_screen(&window));

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
