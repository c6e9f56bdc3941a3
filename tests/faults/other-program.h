#pragma once

#include "store/saving-test.h"

#include <functional>
#include <string>
#include <vector>

// Runs `action` in a copy of this process while this process does `meanwhile`. Returns when both
// have ended. A failed expectation of the action fails the test. REQUIRES: the action does not
// use the display, which the copy shares.
void in_another_program(
    const std::function<void()>& action, const std::function<void()>& meanwhile = [] {});

// Two programs that use one store. `mine` is the window of this process, and `theirs` is that of
// the other process. Both windows stay hidden and have the survey that enter_survey() enters, with
// different species.
class TwoPrograms : public SavingTest
{
public:
  void SetUp() override;

  // Returns the document that a window would write now. Fails the test if there is none.
  static std::string text_of(SurveyWindow& window);
  // Returns the paths and contents of all files below the root of the store that contain neither
  // document, including temporary files of the library.
  std::vector<std::string> files_that_are_neither();
  // Returns the contents of the survey files of a state, sorted.
  std::vector<std::string> texts_in(MyApp::WhichDir which) const;

  SurveyWindow* mine = nullptr;
  SurveyWindow* theirs = nullptr;
  std::string my_text, their_text; // the documents of their survey
};
