#include "store/saving-test.h"

#include "store/survey-file-name.h"
#include "support/dialogs.h"
#include "ui/member-panel.h"
#include "ui/survey-panel1.h"
#include "ui/survey-window.h"

#include <algorithm>
#include <filesystem>

namespace fs = std::filesystem;

void SavingTest::SetUp()
{
  open_window();
}

void SavingTest::enter_survey()
{
  type_member("1234", "Smith");
  choose_subregion("Northwest");
  choose_survey_type("Northwest: abundance");
  choose_date("2021", "June", "30");
  choose(*window->survey_panel1->dive_start, "9 AM");
  window->survey_panel1->zonecode->set_text("31020003");
  window->survey.abundances = {{10, 2}, {11, 1}};
}

void SavingTest::type_member(const Glib::ustring& id, const Glib::ustring& name) const
{
  window->member_panel->member_id->set_text(id);
  window->member_panel->last_name->set_text(name);
}

void SavingTest::choose_date(const Glib::ustring& year, const Glib::ustring& month,
                             const Glib::ustring& day) const
{
  choose(*window->survey_panel1->year, year);
  choose(*window->survey_panel1->month, month);
  choose(*window->survey_panel1->mday, day);
}

std::string SavingTest::path_of(MyApp::WhichDir which, const std::string& base_name) const
{
  return my_app->get_survey_dir(which) + "/" + base_name + survey_file_extension;
}

std::vector<std::string> SavingTest::names_in(MyApp::WhichDir which) const
{
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(my_app->get_survey_dir(which)))
    names.push_back(entry.path().filename().string());
  std::sort(names.begin(), names.end());
  return names;
}

void save_quietly(SurveyWindow& window, MyApp::WhichDir which)
{
  expect_no_dialog(
      [&] { EXPECT_EQ(RET_SUCCESS, window.do_save(which, SurveyWindow::SAVE_QUIET)); });
}
