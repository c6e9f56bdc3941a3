#pragma once

#include "support/data-set.h"

#include <glibmm/ustring.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace Gtk {
class Button;
class Widget;
} // namespace Gtk

class DropDownBox;
class MyApp;
class SurveyWindow;

// A test of real windows. Each test has an application directory with the minimal data set,
// which it may change before its first window, and an empty store.
class WindowTest : public testing::Test
{
public:
  ~WindowTest() override;

  // Returns a new, hidden window with its panels and stores it in `window`. The first call reads
  // the data set.
  SurveyWindow* create_window();
  // Like create_window(), but adds the window to the application and shows it.
  SurveyWindow* open_window();
  // Returns the visible windows.
  static std::vector<SurveyWindow*> visible_windows();

  // Chooses a location of region-info.csv by its name, as the user does.
  void choose_subregion(const Glib::ustring& name) const;
  // Chooses a survey type by its name.
  void choose_survey_type(const Glib::ustring& name) const;
  // Turns to the notebook's page with that number.
  void go_to_page(int page) const;

  ApplicationDir application_dir;
  MyApp* my_app = nullptr; // lives until the process ends, like windows
  SurveyWindow* window = nullptr;
};

// Chooses the first row with that label. Fails the test if there is none.
void choose(DropDownBox& box, const Glib::ustring& label);

// Clicks a button. Fails the test if the user could not click it.
void press(Gtk::Button& button);

// Returns the widget with that id in the window, or null if there is none.
Gtk::Widget* find_widget(Gtk::Widget& window, const Glib::ustring& id);
