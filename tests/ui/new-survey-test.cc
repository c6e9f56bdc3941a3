#include "support/dialogs.h"
#include "support/main-loop.h"
#include "support/window-fixture.h"
#include "ui/listed-panel.h"
#include "ui/member-panel.h"
#include "ui/next-window.h"
#include "ui/start-panel.h"
#include "ui/survey-panel1.h"
#include "ui/survey-window.h"

#include <gtkmm/application.h>

#include <stdexcept>

namespace {

class NewSurvey : public WindowTest
{
public:
  NewSurvey() { open_window(); }

  void enter_member(const char* id, const char* last_name) const
  {
    window->member_panel->member_id->set_text(id);
    window->member_panel->last_name->set_text(last_name);
  }
  // Starts a new survey and discards the changes of the current one. Returns the window of the new
  // survey, which must be the only visible one; null if none is visible.
  SurveyWindow* start() const
  {
    const bool asks = window->file_needs_saving();
    answer_dialogs(asks ? std::vector<int>{Gtk::RESPONSE_NO} : std::vector<int>{},
                   [&] { window->actions["FileNew"]->activate(); });
    settle();
    const auto visible = visible_windows();
    EXPECT_EQ(1U, visible.size());
    EXPECT_FALSE(window->get_visible());
    return visible.empty() ? nullptr : visible.front();
  }
};

} // namespace

TEST_F(NewSurvey, OpensInANewWindowThatReplacesTheOldOne)
{
  auto* next = start();
  ASSERT_NE(nullptr, next);
  EXPECT_NE(window, next);
  const auto windows = my_app->app->get_windows();
  ASSERT_EQ(1U, windows.size());
  EXPECT_EQ(next, windows.front());
}

TEST_F(NewSurvey, StartsAlsoFromTheStartPage)
{
  press(*window->start_panel->new_survey_button);
  EXPECT_FALSE(window->get_visible());
  EXPECT_EQ(1U, visible_windows().size());
}

TEST_F(NewSurvey, KeepsMemberLocationTypeAndNameDisplay)
{
  enter_member(" 1234 ", "  Marsh");
  choose_subregion("Florida & Gulf");
  choose_survey_type("Florida: abundance");
  window->listed_panel->name_display_both->set_active(true);
  window->listed_panel->spanish_enable->set_active(true);

  auto* next = start();
  ASSERT_NE(nullptr, next);
  EXPECT_EQ("1234", next->member_panel->member_id->get_text()) << "without blanks around it";
  EXPECT_EQ("Marsh", next->member_panel->last_name->get_text());
  EXPECT_EQ("Florida & Gulf", next->survey_panel1->subregion->get_label());
  EXPECT_EQ("FLA", next->survey.subregion);
  EXPECT_EQ(6, next->survey_panel1->survey_subtype->get_id());
  EXPECT_FALSE(next->listed_panel->name_display_common->get_active());
  EXPECT_FALSE(next->listed_panel->name_display_scientific->get_active());
  EXPECT_TRUE(next->listed_panel->name_display_both->get_active());
  EXPECT_TRUE(next->listed_panel->spanish_enable->get_active());
}

TEST_F(NewSurvey, KeepsEachNameDisplay)
{
  window->listed_panel->name_display_scientific->set_active(true);
  auto* next = start();
  ASSERT_NE(nullptr, next);
  EXPECT_TRUE(next->listed_panel->name_display_scientific->get_active());
  EXPECT_FALSE(next->listed_panel->spanish_enable->get_active());
}

TEST_F(NewSurvey, KeepsNothingOfTheDiveItself)
{
  choose_subregion("Northwest");
  choose_survey_type("Northwest: abundance");
  window->survey_panel1->zonecode->set_text("31020003");
  choose(*window->survey_panel1->month, "June");
  choose(*window->survey_panel1->dive_start, "9 AM");
  window->survey.abundances[10] = 2;
  window->survey.filename = "somewhere";

  auto* next = start();
  ASSERT_NE(nullptr, next);
  EXPECT_EQ("", next->survey_panel1->get_zonecode());
  EXPECT_EQ(0, next->survey_panel1->month->get_id());
  EXPECT_EQ("", next->survey_panel1->dive_start->get_label());
  EXPECT_TRUE(next->survey.abundances.empty());
  EXPECT_EQ("", next->survey.filename);
  EXPECT_EQ(next->base_title, next->get_title());
}

TEST_F(NewSurvey, DoesNotKeepATypeThatIsNoLongerOffered)
{
  choose_subregion("Northwest");
  window->survey_panel1->set_survey_subtype_even_invisible("PNW", 4);
  ASSERT_EQ(4, window->survey_panel1->survey_subtype->get_id());
  auto* next = start();
  ASSERT_NE(nullptr, next);
  EXPECT_EQ("Northwest", next->survey_panel1->subregion->get_label());
  EXPECT_EQ(-1, next->survey_panel1->survey_subtype->get_id());
}

TEST_F(NewSurvey, KeepsNoChoiceWhereNoneWasMade)
{
  auto* next = start();
  ASSERT_NE(nullptr, next);
  EXPECT_EQ(-1, next->survey_panel1->subregion->get_active_row_number());
  EXPECT_EQ(-1, next->survey_panel1->survey_subtype->get_active_row_number());
  EXPECT_EQ("", next->survey.subregion);
}

TEST_F(NewSurvey, TreatsWhatItKeptAsUnchanged)
{
  enter_member("1234", "Marsh");
  choose_subregion("Northwest");
  choose_survey_type("Northwest: abundance");
  auto* next = start();
  ASSERT_NE(nullptr, next);
  EXPECT_PRED_FORMAT2(testing::IsSubstring, "Marsh", next->survey.xml_last_saved.raw());
  EXPECT_PRED_FORMAT2(testing::IsNotSubstring, "Marsh", next->survey.xml_pristine.raw());
  EXPECT_FALSE(next->file_needs_saving());
  next->member_panel->last_name->set_text("Reed");
  EXPECT_FALSE(next->file_needs_saving()) << "a change of the member alone need not be saved";
  choose(*next->survey_panel1->month, "June");
  EXPECT_TRUE(next->file_needs_saving());
}

TEST_F(NewSurvey, BeginsAtTheFirstMissingEntry)
{
  const struct {
    const char *id, *last_name;
    int page;
    const char* focus;
  } cases[] = {
      {"", "", 1, "member_id"},          {"", "Marsh", 1, "member_id"},
      {"1234", "", 1, "last_name"},      {"1234", "   ", 1, "last_name"},
      {"1234", "Marsh", 2, "subregion"},
  };
  for (const auto& c : cases) {
    enter_member(c.id, c.last_name);
    auto* next = start();
    ASSERT_NE(nullptr, next);
    EXPECT_EQ(c.page, next->notebook->get_current_page()) << c.id << "/" << c.last_name;
    auto* expected = find_widget(*next, c.focus);
    auto* focus = next->get_focus();
    ASSERT_NE(nullptr, expected) << c.focus;
    EXPECT_TRUE(focus && (focus == expected || focus->is_ancestor(*expected)))
        << c.id << "/" << c.last_name;
    window = next;
  }
}

TEST_F(NewSurvey, DoesNotStartIfTheUserKeepsTheOldOne)
{
  choose_subregion("Northwest");
  const auto seen =
      answer_next_dialog(Gtk::RESPONSE_CANCEL, [&] { window->actions["FileNew"]->activate(); });
  EXPECT_PRED_FORMAT2(testing::IsSubstring, "Save it before closing it to start a new survey?",
                      seen.text.raw());
  EXPECT_TRUE(window->get_visible());
  EXPECT_EQ(1U, visible_windows().size());
  EXPECT_EQ(1U, my_app->app->get_windows().size());
}

TEST_F(NewSurvey, LeavesNoHiddenWindowIfItFails)
{
  try {
    const NextWindow next(*my_app);
    EXPECT_EQ(2U, my_app->app->get_windows().size());
    throw std::runtime_error("something went wrong");
  } catch (const std::runtime_error&) {
  }
  ASSERT_EQ(1U, my_app->app->get_windows().size()) << "a hidden window keeps the program running";
  EXPECT_EQ(window, my_app->app->get_windows().front());
  EXPECT_TRUE(window->get_visible());
}
