#pragma once

#include "core/my-app.h"
#include "support/window-fixture.h"

#include <string>
#include <vector>

// A test of saving: a window on the screen over an empty store.
class SavingTest : public WindowTest
{
public:
  void SetUp() override;

  // Puts a whole survey into the window: member 1234 in the Northwest on
  // 2021-06-30 at 9 AM, zone 31020003, two species.
  void enter_survey();
  // The texts of the entries of the panels, as the user types them.
  void type_member(const Glib::ustring& id, const Glib::ustring& name) const;
  void choose_date(const Glib::ustring& year, const Glib::ustring& month,
                   const Glib::ustring& day) const;

  // Where a survey of that base name lies in a state.
  std::string path_of(MyApp::WhichDir which, const std::string& base_name) const;
  // The names of the files of a state, sorted.
  std::vector<std::string> names_in(MyApp::WhichDir which) const;

  // The base name of what enter_survey() enters.
  const std::string natural_name = "1234-PNW-20210630-0900-31020003";
};

// Saves without a question; fails the test if it does not succeed.
void save_quietly(SurveyWindow& window, MyApp::WhichDir which);
