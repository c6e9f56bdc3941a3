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

// A test of real windows. Each has a program directory with the minimal data
// set, which it may change before its first window, and an empty store.
class WindowTest : public testing::Test
{
public:
  ~WindowTest() override;

  // A new window with its panels, hidden; the first one reads the data. It also
  // becomes `window`.
  SurveyWindow* create_window();
  // The same, added to the application and on the screen.
  SurveyWindow* open_window();
  // The windows that the user can see.
  static std::vector<SurveyWindow*> visible_windows();

  // Chooses a place of region-info.csv by its name, as the user does.
  void choose_subregion(const Glib::ustring& name) const;
  // Chooses a survey type by its name.
  void choose_survey_type(const Glib::ustring& name) const;
  // Turns to the notebook's page of that number.
  void go_to_page(int page) const;

  ApplicationDir application_dir;
  MyApp* my_app = nullptr; // lives as long as the process, as windows do
  SurveyWindow* window = nullptr;
};

// Chooses the first row with that label; fails the test if there is none.
void choose(DropDownBox& box, const Glib::ustring& label);

// Clicks a button; fails the test if the user could not.
void press(Gtk::Button& button);

// The widget of that id in the window, null if there is none.
Gtk::Widget* find_widget(Gtk::Widget& window, const Glib::ustring& id);
