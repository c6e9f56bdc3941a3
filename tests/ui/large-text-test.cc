// Checks that the window and its dialogs are usable at twice the text size.

#include "support/main-loop.h"
#include "ui/confirm-panel.h"
#include "ui/drop-down-box.h"
#include "ui/listed-panel.h"
#include "ui/member-panel.h"
#include "ui/species-window.h"
#include "ui/start-panel.h"
#include "ui/survey-panel1.h"
#include "ui/survey-panel2.h"
#include "ui/survey-window.h"
#include "ui/unlisted-panel.h"

#include <gtkmm/aboutdialog.h>
#include <gtkmm/adjustment.h>
#include <gtkmm/entry.h>
#include <gtkmm/scrollbar.h>
#include <gtkmm/scrolledwindow.h>
#include <gtkmm/settings.h>

namespace {

constexpr int normal_dpi = 96 * 1024; // in 1/1024 dpi, the unit of the setting
// The smallest screen that is still common.
constexpr int screen_width = 1366;
constexpr int screen_height = 768;

class LargeText : public SpeciesWindowTest
{
protected:
  void SetUp() override { set_dpi(2 * normal_dpi); }
  void TearDown() override { set_dpi(normal_dpi); }

  static void set_dpi(int dpi)
  {
    Gtk::Settings::get_default()->property_gtk_xft_dpi() = dpi;
    settle();
  }

  static void expect_on_screen(Gtk::Widget& toplevel, const char* what)
  {
    Gtk::Requisition least;
    Gtk::Requisition natural;
    toplevel.get_preferred_size(least, natural);
    EXPECT_LE(least.width, screen_width) << what;
    EXPECT_LE(least.height, screen_height) << what;
  }

  // Expects that every text is visible or can be reached with a scroll bar.
  void expect_reachable(Gtk::Widget& page)
  {
    auto* const scrolled = dynamic_cast<Gtk::ScrolledWindow*>(&page);
    ASSERT_NE(scrolled, nullptr);
    Gtk::PolicyType across = Gtk::POLICY_NEVER;
    Gtk::PolicyType down = Gtk::POLICY_NEVER;
    scrolled->get_policy(across, down);
    EXPECT_EQ(across, Gtk::POLICY_AUTOMATIC);
    EXPECT_EQ(down, Gtk::POLICY_AUTOMATIC);
    wait_until("the page is laid out", [&] {
      auto& contents = *scrolled->get_child();
      int width = 0;
      int height = 0; // depends on the width
      int natural = 0;
      contents.get_preferred_width(width, natural);
      contents.get_preferred_height_for_width(contents.get_allocated_width(), height, natural);
      return scrolled->get_hadjustment()->get_upper() >= width &&
             scrolled->get_vadjustment()->get_upper() >= height;
    });
  }

  // A truncated label ends in dots. Only cells of lists may be truncated.
  void expect_no_dots(Gtk::Widget& widget)
  {
    if (const auto* const label = dynamic_cast<Gtk::Label*>(&widget)) {
      EXPECT_FALSE(label->get_layout()->is_ellipsized()) << label->get_text();
    }
    if (auto* const container = dynamic_cast<Gtk::Container*>(&widget))
      container->foreach ([this](Gtk::Widget& child) { expect_no_dots(child); });
  }
};

} // namespace

TEST_F(LargeText, IsReallyLarger)
{
  open_window();
  const int large = window->next_button->get_allocated_height();
  set_dpi(normal_dpi);
  wait_until("the buttons are smaller",
             [&] { return window->next_button->get_allocated_height() < large; });
}

TEST_F(LargeText, KeepsTheWindowOnTheScreen)
{
  open_northwest();
  expect_on_screen(*window, "window");
}

TEST_F(LargeText, TruncatesNothingOnAnyPage)
{
  open_northwest();
  window->unlisted_panel->species_search->set_text("a");
  mark(10, 2);
  for (int page = 0; page < window->notebook->get_n_pages(); ++page) {
    SCOPED_TRACE(page);
    go_to_page(page);
    expect_reachable(*window->notebook->get_nth_page(page));
    expect_no_dots(*window);
  }
}

TEST_F(LargeText, NeedsNoScrollingSidewaysOnAnyPage)
{
  application_dir.use_shipped_data();
  open_survey("Florida and Gulf of Mexico", "Florida: species and abundance");
  int bar = 0; // the width of a scroll bar in a theme whose scroll bars do not cover the page
  int natural_bar = 0;
  Gtk::Scrollbar scrollbar(Gtk::Adjustment::create(0, 0, 1), Gtk::ORIENTATION_VERTICAL);
  scrollbar.show();
  scrollbar.get_preferred_width(bar, natural_bar);
  EXPECT_GT(bar, 0);
  const int width = window->notebook->get_allocated_width() - bar;
  for (Gtk::Widget* const panel : {static_cast<Gtk::Widget*>(window->start_panel),
                                   static_cast<Gtk::Widget*>(window->member_panel),
                                   static_cast<Gtk::Widget*>(window->survey_panel1),
                                   static_cast<Gtk::Widget*>(window->survey_panel2),
                                   static_cast<Gtk::Widget*>(window->listed_panel),
                                   static_cast<Gtk::Widget*>(window->unlisted_panel),
                                   static_cast<Gtk::Widget*>(window->confirm_panel)}) {
    Gtk::Requisition least;
    Gtk::Requisition natural;
    panel->get_preferred_size(least, natural);
    EXPECT_LE(least.width, width) << panel->Gtk::Buildable::get_name();
  }
}

TEST_F(LargeText, KeepsTheDateOfTheSummaryInOneLine)
{
  application_dir.use_shipped_data();
  open_survey("Florida and Gulf of Mexico", "Florida: species and abundance");
  choose(*window->survey_panel1->month, "June");
  choose(*window->survey_panel1->mday, "30");
  choose(*window->survey_panel1->year, "2021");
  go_to_page(window->confirm_panel->page);
  let_draw(*window);
  const auto& date = *window->confirm_panel->conf_survey_date;
  EXPECT_EQ("2021-06-30", date.get_text());
  EXPECT_EQ(1, date.get_layout()->get_line_count());
}

TEST_F(LargeText, KeepsTheDialogsOnTheScreen)
{
  open_window();
  expect_on_screen(*window->contact_dialog, "contact");
  expect_on_screen(*window->instructions_dialog, "instructions");
  expect_on_screen(*window->about_dialog, "about");
}
