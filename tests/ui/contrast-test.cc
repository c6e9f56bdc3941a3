// Checks that the window's texts are readable in light and dark themes. Computes the contrast from
// the current styles and the drawn window.

#include "support/main-loop.h"
#include "ui/confirm-panel.h"
#include "ui/drop-down-box.h"
#include "ui/listed-panel.h"
#include "ui/member-panel.h"
#include "ui/shown-text.h"
#include "ui/species-instructions.h"
#include "ui/species-markup.h"
#include "ui/species-window.h"
#include "ui/start-panel.h"
#include "ui/style.h"
#include "ui/survey-panel1.h"
#include "ui/survey-panel2.h"
#include "ui/survey-window.h"
#include "ui/unlisted-panel.h"

#include <gtkmm/aboutdialog.h>
#include <gtkmm/messagedialog.h>
#include <gtkmm/settings.h>

namespace {

constexpr double readable = 4.5;
constexpr double red_on_its_ground = 3; // the fixed red does not allow more
constexpr double insensitive = 2.5;     // enough to see that a text exists

const Gtk::StateFlags plain = Gtk::STATE_FLAG_NORMAL;
const Gtk::StateFlags selected = Gtk::STATE_FLAG_SELECTED;
const Gtk::StateFlags focused = selected | Gtk::STATE_FLAG_FOCUSED;
const Gtk::StateFlags behind = Gtk::STATE_FLAG_BACKDROP;

bool is_red(const Gdk::RGBA& colour)
{
  return colour == Gdk::RGBA("red");
}

double needed(const ShownText& text)
{
  if (!text.is_sensitive && !text.is_value)
    return insensitive;
  return is_red(text.colour) ? red_on_its_ground : readable;
}

void expect_readable(const std::vector<ShownText>& texts, const std::string& where)
{
  for (const auto& text : texts) {
    EXPECT_GE(contrast(text.colour, text.ground), needed(text))
        << where << ": \"" << text.words << "\" " << text.colour.to_string() << " on "
        << text.ground.to_string();
    EXPECT_TRUE(text.is_bold || !is_red(text.colour)) << where << ": " << text.words;
  }
}

// A theme of the toolkit.
struct Theme {
  const char* name; // in the test's name
  const char* toolkit_name;
  bool is_dark;
};

constexpr Theme usual{"Adwaita", "Adwaita", false};
constexpr Theme themes[] = {usual,
                            {"AdwaitaDark", "Adwaita", true},
                            {"HighContrast", "HighContrast", false},
                            {"HighContrastInverse", "HighContrastInverse", true}};

// Runs with each theme.
class Contrast : public SpeciesWindowTest, public testing::WithParamInterface<Theme>
{
protected:
  void SetUp() override { choose_theme(GetParam()); }
  void TearDown() override { choose_theme(usual); }

  static void choose_theme(const Theme& theme)
  {
    const auto settings = Gtk::Settings::get_default();
    settings->property_gtk_enable_animations() = false; // colours change at once
    settings->property_gtk_theme_name() = theme.toolkit_name;
    settings->property_gtk_application_prefer_dark_theme() = theme.is_dark;
    settle();
  }

  // Opens a window that is so large that almost nothing needs scrolling.
  void open_large_window()
  {
    open_window();
    window->resize(1300, 700);
    wait_until("the window is large", [this] { return window->get_allocated_width() > 1200; });
  }

  void fill_in_fields()
  {
    choose_subregion("Northwest");
    choose_survey_type("Northwest: fish and invertebrates");
    window->member_panel->member_id->set_text("1234");
    window->survey_panel1->zonecode->set_text("31020003");
    window->survey_panel2->habitat->set_active(0);
    window->unlisted_panel->species_search->set_text("a");
    mark(10, 2);
  }

  void expect_all_pages_readable(const std::string& survey)
  {
    for (int page = 0; page < window->notebook->get_n_pages(); ++page) {
      go_to_page(page);
      const auto texts = shown_texts(*window);
      EXPECT_GT(texts.size(), 10U);
      expect_readable(texts, survey + ", page " + std::to_string(page));
    }
  }

  // Checks all texts of species rows in one state.
  void expect_rows_readable(const Gtk::TreeView& view, Gtk::StateFlags state)
  {
    const ShownText row = styled_text(view, state);
    for (const int id : {-1, 1}) {
      for (const int rarity : {0, 1, 2}) {
        const auto names = species_markup(id, "Common & more", "Scientific", "Spanish", rarity);
        expect_readable(
            texts_of_markup(drawn_markup(names.both, GetParam().is_dark), row.colour, row.ground),
            "row in state " + std::to_string(static_cast<unsigned int>(state)));
      }
    }
  }

  void expect_dialog_readable(Gtk::Window& dialog, const std::string& what)
  {
    dialog.show();
    wait_until("the dialog is active", [&] { return dialog.is_active(); });
    settle();
    expect_readable(shown_texts(dialog), what);
    dialog.hide();
    settle();
  }
};

} // namespace

TEST(ContrastOfColours, IsThatOfTheGuidelines)
{
  const struct {
    const char* one;
    const char* other;
    double expected;
  } cases[] = {{"black", "white", 21},
               {"white", "white", 1},
               {"#777777", "white", 4.48},
               {"red", "white", 4.0},
               {"blue", "white", 8.59}};
  for (const auto& c : cases)
    EXPECT_NEAR(c.expected, contrast(Gdk::RGBA(c.one), Gdk::RGBA(c.other)), 0.01) << c.one;
}

TEST_P(Contrast, IsSufficientOnEveryPageOfAnEmptySurvey)
{
  open_large_window();
  expect_all_pages_readable("empty");
}

TEST_P(Contrast, IsSufficientOnEveryPageOfASurvey)
{
  open_large_window();
  fill_in_fields();
  expect_all_pages_readable("begun");
}

TEST_P(Contrast, IsSufficientForLockedFields)
{
  open_large_window();
  fill_in_fields();
  window->set_survey_is_uploaded();
  expect_all_pages_readable("uploaded");
}

TEST_P(Contrast, IsSufficientForRowsOfSpeciesInEveryState)
{
  open_northwest();
  for (const auto* const view :
       {window->listed_panel->species_tree, window->unlisted_panel->found_species_tree,
        window->unlisted_panel->selected_species_tree, window->confirm_panel->conf_listed_tree,
        window->confirm_panel->conf_unlisted_tree})
    for (const auto state : {plain, selected, focused, behind, behind | selected})
      expect_rows_readable(*view, state);
}

TEST_P(Contrast, MatchesTheThemeInLists)
{
  open_northwest();
  EXPECT_EQ(GetParam().is_dark, has_dark_theme(*window));
  for (const Gtk::Widget* const view :
       {static_cast<Gtk::Widget*>(window->listed_panel->species_tree),
        static_cast<Gtk::Widget*>(window->unlisted_panel->found_species_tree),
        static_cast<Gtk::Widget*>(window->unlisted_panel->selected_species_tree),
        static_cast<Gtk::Widget*>(window->confirm_panel->conf_listed_tree),
        static_cast<Gtk::Widget*>(window->confirm_panel->conf_unlisted_tree),
        static_cast<Gtk::Widget*>(window->start_panel->survey_tree),
        static_cast<Gtk::Widget*>(window->survey_panel1->geog_tree)}) {
    for (const auto state : {plain, behind}) {
      const ShownText row = styled_text(*view, state);
      const Gdk::RGBA white("white");
      const bool is_dark = contrast(row.ground, white) > contrast(row.ground, Gdk::RGBA("black"));
      EXPECT_EQ(GetParam().is_dark, is_dark) << row.ground.to_string();
    }
  }
}

// Checks the colours of the shipped species as cells draw them.
TEST_P(Contrast, IsSufficientInDrawnRows)
{
  application_dir.use_shipped_data();
  open_survey("Florida and Gulf of Mexico", "Florida: species and abundance");
  const ShownText row = styled_text(tree(), plain);
  bool has_shade = false;
  window->unlisted_model->foreach_iter([&](const Gtk::TreeIter& species) {
    const auto stored = species->get_value(window->species_columns.col_both);
    has_shade = has_shade || stored.find("background") != Glib::ustring::npos;
    expect_readable(
        texts_of_markup(drawn_markup(stored, GetParam().is_dark), row.colour, row.ground), "row");
    return false;
  });
  EXPECT_TRUE(has_shade);
}

TEST_P(Contrast, IsSufficientForRowsOfSurveysAndZonesInEveryState)
{
  open_northwest();
  for (const auto* const view :
       {window->start_panel->survey_tree, window->survey_panel1->geog_tree})
    for (const auto state : {plain, selected, focused, behind, behind | selected})
      expect_readable({styled_text(*view, state)}, "row");
}

TEST_P(Contrast, IsSufficientForTheShadesInTheInstructions)
{
  open_northwest();
  auto& label = *window->listed_panel->listed_instructions;
  for (const int rarity : {0, 1, 2}) {
    label.set_label(species_instructions(true, rarity, true));
    make_shades_readable(label);
    expect_readable(shown_texts(*window), "instructions");
  }
}

TEST_P(Contrast, IsSufficientInMenusAlsoUnderThePointer)
{
  open_northwest();
  Gtk::Menu* const menu = window->current_abundance_menu;
  ASSERT_NE(menu, nullptr);
  ShownText item = styled_text(*menu->get_children().front(), plain);
  item.ground = styled_text(*menu, plain).ground;
  const ShownText picked = styled_text(*menu->get_children().front(), Gtk::STATE_FLAG_PRELIGHT);
  expect_readable({item, picked}, "menu");
}

// Simulates a window manager that reports which window has the focus.
TEST_P(Contrast, IsSufficientInTheWindowBehindADialog)
{
  open_large_window();
  fill_in_fields();
  window->set_state_flags(behind, false);
  expect_all_pages_readable("behind");
}

TEST_P(Contrast, IsSufficientInDialogs)
{
  open_large_window();
  fill_in_fields();
  go_to_page(window->confirm_panel->page);
  expect_dialog_readable(*window->contact_dialog, "contact");
  expect_dialog_readable(*window->instructions_dialog, "instructions");
  expect_dialog_readable(*window->about_dialog, "about");
  Gtk::MessageDialog message(*window, "A <b>question</b>?", true, Gtk::MESSAGE_QUESTION,
                             Gtk::BUTTONS_OK_CANCEL);
  expect_dialog_readable(message, "message");
}

INSTANTIATE_TEST_SUITE_P(Themes, Contrast, testing::ValuesIn(themes),
                         [](const auto& theme) { return std::string(theme.param.name); });
