#include "support/main-loop.h"
#include "support/window-fixture.h"
#include "ui/drop-down-box.h"
#include "ui/member-panel.h"
#include "ui/survey-panel1.h"
#include "ui/survey-window.h"

namespace {

class MemberPanelTest : public WindowTest
{
public:
  MemberPanel* open_panel()
  {
    MemberPanel* panel = open_window()->member_panel;
    go_to_page(panel->page);
    return panel;
  }
};

// Returns whether a widget has the focus. A combo box gives the focus to the button inside it.
bool has_focus(const SurveyWindow& window, const Gtk::Widget& widget)
{
  const Gtk::Widget* focus = window.get_focus();
  return focus && (focus == &widget || focus->is_ancestor(const_cast<Gtk::Widget&>(widget)));
}

} // namespace

TEST_F(MemberPanelTest, ReturnsTypedTextWithoutBlanksAtBothEnds)
{
  const struct {
    const char* typed;
    const char* expected;
  } cases[] = {
      {"", ""}, {"1234", "1234"}, {"  12 34 ", "12 34"}, {"   ", ""}, {"\t12", "\t12"},
  };
  const MemberPanel* panel = open_panel();
  for (const auto& c : cases) {
    panel->member_id->set_text(c.typed);
    panel->last_name->set_text(c.typed);
    EXPECT_EQ(c.expected, panel->get_member_id()) << c.typed;
    EXPECT_EQ(c.expected, panel->get_last_name()) << c.typed;
    EXPECT_EQ(c.typed, panel->member_id->get_text());
    EXPECT_EQ(c.typed, panel->last_name->get_text());
  }
}

TEST_F(MemberPanelTest, GoesToTheLastNameAtEnter)
{
  const MemberPanel* panel = open_panel();
  panel->member_id->grab_focus();
  panel->member_id->activate();
  settle();
  EXPECT_TRUE(has_focus(*window, *panel->last_name));
  EXPECT_EQ(panel->page, window->notebook->get_current_page());
}

TEST_F(MemberPanelTest, GoesToTheLocationAtEnterInTheLastName)
{
  const MemberPanel* panel = open_panel();
  panel->last_name->grab_focus();
  panel->last_name->activate();
  settle();
  EXPECT_EQ(2, window->notebook->get_current_page());
  EXPECT_TRUE(has_focus(*window, *window->survey_panel1->subregion));
}

TEST_F(MemberPanelTest, ShowsTheLocationPageFromAnyPage)
{
  open_panel();
  go_to_page(6);
  window->survey_panel1->focus_on(window->survey_panel1->zone_search);
  window->survey_panel1->focus_on(window->survey_panel1->subregion);
  settle();
  EXPECT_EQ(window->survey_panel1->page, window->notebook->get_current_page());
  EXPECT_TRUE(has_focus(*window, *window->survey_panel1->subregion));
}
