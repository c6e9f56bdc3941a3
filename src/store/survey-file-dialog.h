#pragma once

#include <gtkmm/filechooserdialog.h>
#include <gtkmm/label.h>
#include <gtkmm/stock.h>

#include <string>
#include <vector>

class SurveyWindow;

// A dialog in which the user chooses a saved survey. It shows the description of the selected
// file below the list. The response is Gtk::RESPONSE_OK or Gtk::RESPONSE_CANCEL.
class SurveyFileDialog : public Gtk::FileChooserDialog
{
public:
  // Creates the dialog above `window`, with the files of `directory`. `action` is the stock item
  // of the button for OK.
  SurveyFileDialog(SurveyWindow& window, const Glib::ustring& title, const std::string& directory,
                   const Gtk::StockID& action);

  // Shows only files whose names match one of the patterns.
  void offer(const std::vector<Glib::ustring>& patterns);

private:
  Gtk::Label preview;
};
