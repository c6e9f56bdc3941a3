#pragma once

#include "core/my-app.h"
#include "support/window-fixture.h"

#include <string>
#include <vector>

// A test of saving, with a visible window and an empty store.
class SavingTest : public WindowTest
{
public:
  void SetUp() override;

  // Enters a survey: member 1234 in the Northwest on 2021-06-30 at 9 AM, zone 31020003, two
  // species.
  void enter_survey();
  // Types the member into the entries.
  void type_member(const Glib::ustring& id, const Glib::ustring& name) const;
  // Chooses the date by the labels of its boxes, such as "2021", "June" and "30".
  void choose_date(const Glib::ustring& year, const Glib::ustring& month,
                   const Glib::ustring& day) const;

  // Returns the path of a survey with that base name in a state.
  std::string path_of(MyApp::WhichDir which, const std::string& base_name) const;
  // Returns the names of the files of a state, sorted.
  std::vector<std::string> names_in(MyApp::WhichDir which) const;

  // The base name of the survey that enter_survey() enters.
  const std::string natural_name = "1234-PNW-20210630-0900-31020003";
};

// Saves the survey in a state. Fails the test if the save fails or opens a dialog.
void save_quietly(SurveyWindow& window, MyApp::WhichDir which);
