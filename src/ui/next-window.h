#pragma once

class MyApp;
class SurveyWindow;

// A new, hidden window that will replace another one. A window in the application's list
// keeps the process alive even if it is hidden. So the destructor removes the new window from
// the list if it has not replaced the other one.
class NextWindow
{
public:
  explicit NextWindow(MyApp& app); // creates the window
  ~NextWindow();
  NextWindow(const NextWindow&) = delete;
  NextWindow& operator=(const NextWindow&) = delete;

  // Shows the new window at the place of the old one, and hides the old one.
  void take_the_place_of(SurveyWindow& old);

  SurveyWindow* const window; // never deleted
};
