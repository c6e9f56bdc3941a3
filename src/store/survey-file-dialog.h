#pragma once

#include <gtkmm/filechooserdialog.h>
#include <gtkmm/label.h>
#include <gtkmm/stock.h>

#include <string>
#include <vector>

class SurveyWindow;

// Lets the user choose a saved survey; what is known of the file under the
// cursor is told below the list. The button that takes the choice responds with
// Gtk::RESPONSE_OK, Cancel with Gtk::RESPONSE_CANCEL.
class SurveyFileDialog : public Gtk::FileChooserDialog
{
public:
  SurveyFileDialog(SurveyWindow& window, const Glib::ustring& title, const std::string& directory,
                   const Gtk::StockID& action);

  // Shows only files whose names fit one of the patterns.
  void offer(const std::vector<Glib::ustring>& patterns);

private:
  Gtk::Label preview;
};
