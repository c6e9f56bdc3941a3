#pragma once

#include "store/saving-test.h"

#include <functional>
#include <string>
#include <vector>

// Does `action` in a process of its own, a copy of this one as it is now, while
// this process does `meanwhile`; both have ended on return. What the action
// expects and does not find fails the test. The action must not use the display,
// which the copy shares.
void in_another_program(
    const std::function<void()>& action, const std::function<void()>& meanwhile = [] {});

// Two programs on one store: `mine` is this process's, `theirs` is for the other
// one. Both windows stay hidden and hold the survey that enter_survey() enters,
// told apart by their species.
class TwoPrograms : public SavingTest
{
public:
  void SetUp() override;

  // The documents of the windows, as they would be written now.
  static std::string text_of(SurveyWindow& window);
  // All files below the root of the store that are no such document. What the
  // library writes on its way to a file counts too.
  std::vector<std::string> files_that_are_neither();
  // The contents of the survey files of a state, sorted.
  std::vector<std::string> texts_in(MyApp::WhichDir which) const;

  SurveyWindow* mine = nullptr;
  SurveyWindow* theirs = nullptr;
  std::string my_text, their_text; // the documents of their survey
};
