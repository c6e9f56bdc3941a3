#pragma once

class MyApp;
class SurveyWindow;

// A new window that is about to take the place of another. Until then it is
// hidden, yet in the application's list, which would keep the process alive
// without a window; so unless it takes the place, it leaves the list again.
class NextWindow
{
public:
  explicit NextWindow(MyApp& app);
  ~NextWindow();
  NextWindow(const NextWindow&) = delete;
  NextWindow& operator=(const NextWindow&) = delete;

  // Shows the new window where the old one is, and hides the old one.
  void take_the_place_of(SurveyWindow& old);

  SurveyWindow* const window; // never deleted
};
