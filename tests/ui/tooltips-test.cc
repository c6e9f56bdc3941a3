// Tests the tooltips: the purpose of a widget, or the reason why it cannot be used now.

#include "store/saving-test.h"
#include "store/survey-file.h"
#include "support/main-loop.h"
#include "ui/confirm-panel.h"
#include "ui/member-panel.h"
#include "ui/start-panel.h"
#include "ui/survey-panel1.h"
#include "ui/survey-panel2.h"
#include "ui/survey-window.h"

namespace {

const char* const first_choose = "First choose a location";
const char* const uploaded_already = "This survey has been uploaded; it can no longer be changed";

class Tooltips : public SavingTest
{
public:
  static std::string of(const Gtk::Widget* widget) { return widget->get_tooltip_text(); }
  static bool has(const Gtk::Widget* widget, const std::string& words)
  {
    return of(widget).find(words) != std::string::npos;
  }
  // Writes a complete survey to a directory of the store and opens it.
  void open_survey_in(MyApp::WhichDir which) const
  {
    const std::string path = path_of(which, "one");
    write_file(path, SurveyFile().text());
    ASSERT_EQ(RET_SUCCESS, window->do_open(path));
  }
};

} // namespace

TEST_F(Tooltips, AskForALocationOnlyUntilOneIsChosen)
{
  const auto& where = *window->survey_panel1;
  const Gtk::Widget* const locked[] = {where.survey_subtype, where.zonecode, where.zone_search,
                                       window->survey_panel2->habitat, window->save_button};
  for (const auto* widget : locked)
    EXPECT_TRUE(has(widget, first_choose)) << widget->get_name() << ": " << of(widget);
  choose_subregion("Northwest");
  for (const auto* widget : locked) {
    EXPECT_FALSE(has(widget, first_choose)) << widget->get_name() << ": " << of(widget);
    EXPECT_NE("", of(widget)) << widget->get_name();
  }
}

TEST_F(Tooltips, AskToFixMarkedEntriesOnlyWhileThereAreAny)
{
  const char* const first_fix = "First fix what the Confirmation page marks in red";
  for (const auto* button : {window->ready_button, window->upload_button})
    EXPECT_TRUE(has(button, first_fix)) << of(button);
  open_survey_in(MyApp::WD_IN_PROGRESS);
  window->confirm_panel->refresh();
  ASSERT_TRUE(window->upload_button->get_sensitive());
  for (const auto* button : {window->ready_button, window->upload_button})
    EXPECT_FALSE(has(button, first_fix)) << of(button);
  window->member_panel->last_name->set_text("");
  window->confirm_panel->refresh();
  for (const auto* button : {window->ready_button, window->upload_button})
    EXPECT_TRUE(has(button, first_fix)) << of(button);
}

TEST_F(Tooltips, OfAnUploadedSurveySayThatItHasBeenUploaded)
{
  open_survey_in(MyApp::WD_UPLOADED);
  window->confirm_panel->refresh();
  const auto& where = *window->survey_panel1;
  const auto& conditions = *window->survey_panel2;
  for (const Gtk::Widget* widget :
       {static_cast<Gtk::Widget*>(window->save_button),
        static_cast<Gtk::Widget*>(window->ready_button),
        static_cast<Gtk::Widget*>(window->upload_button),
        static_cast<Gtk::Widget*>(window->member_panel->member_id),
        static_cast<Gtk::Widget*>(window->member_panel->last_name),
        static_cast<Gtk::Widget*>(where.subregion), static_cast<Gtk::Widget*>(where.survey_subtype),
        static_cast<Gtk::Widget*>(where.zonecode),
        static_cast<Gtk::Widget*>(conditions.bottom_time),
        static_cast<Gtk::Widget*>(conditions.habitat),
        static_cast<Gtk::Widget*>(window->confirm_panel->confirm_bottom_time)}) {
    EXPECT_FALSE(widget->get_sensitive()) << widget->get_name();
    EXPECT_EQ(uploaded_already, of(widget)) << widget->get_name();
  }
  EXPECT_EQ("A part of the name is enough", of(where.zone_search)); // still useful
}

TEST_F(Tooltips, OfTheStartPageExplainWhatTheyNeed)
{
  const StartPanel& panel = *window->start_panel;
  const auto choose_row = [&](const char* path) {
    window->start_panel->do_survey_line_trigger(Gtk::TreePath(path), 0, 0);
  };
  for (const auto which : {MyApp::WD_IN_PROGRESS, MyApp::WD_READY_TO_UPLOAD, MyApp::WD_UPLOADED})
    write_file(path_of(which, "one"), SurveyFile().text());
  window->start_panel->build_survey_model();

  choose_row("0");
  for (const auto* button : {panel.edit_view_button, panel.upload_button, panel.delete_button})
    EXPECT_EQ("First select a survey in the list", of(button));
  choose_row("0:0");
  EXPECT_EQ("Open the selected survey", of(panel.edit_view_button));
  EXPECT_EQ("First open this survey and mark it for upload on its last page",
            of(panel.upload_button));
  choose_row("1:0");
  EXPECT_EQ("Send the selected survey to MAVO now", of(panel.upload_button));
  EXPECT_EQ("Delete the selected survey; you are asked before it is gone", of(panel.delete_button));
  choose_row("2:0");
  EXPECT_EQ("This survey has been uploaded", of(panel.upload_button));
  EXPECT_EQ("Open the selected survey to read it", of(panel.edit_view_button));
}

TEST_F(Tooltips, OfTheFirstAndLastPageSayWhereTheUserIs)
{
  go_to_page(0);
  EXPECT_EQ("This is the first page", of(window->back_button));
  go_to_page(1);
  EXPECT_EQ("Go to the page before this one", of(window->back_button));
  EXPECT_EQ("Go to the next page", of(window->next_button));
  go_to_page(window->confirm_panel->page);
  EXPECT_EQ("This is the last page", of(window->next_button));
}
