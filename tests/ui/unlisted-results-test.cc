#include "support/main-loop.h"
#include "ui/listed-panel.h"
#include "ui/species-window.h"
#include "ui/survey-panel1.h"
#include "ui/survey-window.h"
#include "ui/unlisted-panel.h"

namespace {

constexpr int longfin_sculpin = 10;
constexpr int lingcod = 11;        // in all of the Northwest's views
constexpr int kelp_greenling = 12; // in none of them

// Tests what stays unchanged when new results replace others.
class UnlistedResultsTest : public SpeciesWindowTest
{
public:
  UnlistedPanel& panel() const { return *window->unlisted_panel; }
  Gtk::TreeView& results() const { return *panel().found_species_tree; }
  double scroll_position() const { return results().get_vadjustment()->get_value(); }

  // Two families: Greenlings with 12 and 11, Sculpins with 10.
  void open_page()
  {
    open_northwest();
    go_to_page(panel().page);
  }
  // Opens a location of the shipped data with more species than the page can show.
  void open_long_page()
  {
    application_dir.use_shipped_data();
    open_window();
    choose_subregion(window->survey_panel1->subregion->items.front().second);
    window->survey_panel1->survey_subtype->set_active(0);
    go_to_page(panel().page);
  }
  void search(const Glib::ustring& text) const
  {
    panel().species_search->set_text(text);
    settle();
  }
  std::string found() const { return rows(panel().found_filter); }
  // Returns the species in the row of the cursor, or 0 without a cursor. Expects that the row is
  // selected.
  int species_at_cursor() const
  {
    const auto path = cursor_path(results());
    EXPECT_EQ(path.empty() ? 0 : 1, panel().found_selection->count_selected_rows());
    if (path.empty())
      return 0;
    EXPECT_TRUE(panel().found_selection->is_selected(path));
    return panel().found_filter->get_iter(path)->get_value(window->species_columns.col_id);
  }
};

} // namespace

TEST_F(UnlistedResultsTest, TheCursorStaysOnASpeciesThatIsStillFound)
{
  open_page();
  search("l");
  results().set_cursor(Gtk::TreePath("0:1"));
  EXPECT_EQ(lingcod, species_at_cursor());
  for (const char* text : {"li", "lingcod", "", "lingcod", "l", "__all__", "o"}) {
    search(text);
    EXPECT_EQ(lingcod, species_at_cursor()) << text;
  }
}

// Otherwise, the Return key could mark a species that the diver did not choose.
TEST_F(UnlistedResultsTest, TheCursorDoesNotGoToAnotherSpecies)
{
  open_page();
  search("l");
  results().set_cursor(Gtk::TreePath("0:1"));
  window->abundance_target = -1;
  for (const char* text : {"kelp", "sculpin", "zzz", "l"}) {
    search(text);
    EXPECT_EQ(0, species_at_cursor()) << text;
    GdkEventKey event = key_press(GDK_KEY_Return);
    EXPECT_FALSE(panel().on_found_species_kb_event(&event)) << text;
    EXPECT_FALSE(panel().on_found_species_kb_activated()) << text;
    EXPECT_EQ(nullptr, close_open_menu()) << text;
  }
  EXPECT_EQ(-1, window->abundance_target);
}

TEST_F(UnlistedResultsTest, TheFocusGoesToTheFirstRowOfResultsWithoutACursor)
{
  open_page();
  search("l");
  results().set_cursor(Gtk::TreePath("1:0"));
  search("ling");
  ASSERT_TRUE(cursor_path(results()).empty());
  results().grab_focus();
  settle();
  EXPECT_EQ("0", cursor_path(results()).to_string());
}

TEST_F(UnlistedResultsTest, TypingKeepsTheFocusWithNewResults)
{
  open_page();
  search("l");
  results().set_cursor(Gtk::TreePath("0:1"));
  panel().species_search->grab_focus();
  for (const char* text : {"li", "lingcod", "kelp", "zzz", "l"}) {
    search(text);
    EXPECT_TRUE(panel().species_search->is_focus()) << text;
  }
}

TEST_F(UnlistedResultsTest, NewResultsStartAtTheTopWhereverTheCursorIs)
{
  open_long_page();
  search("__all__");
  let_draw(results());
  const int last_family = static_cast<int>(panel().found_filter->children().size()) - 1;
  results().set_cursor(Gtk::TreePath(std::to_string(last_family) + ":0"));
  let_draw(results());
  const int species = species_at_cursor();
  EXPECT_LT(0, scroll_position());
  search(" ");
  let_draw(results());
  EXPECT_EQ(0, scroll_position());
  EXPECT_EQ(species, species_at_cursor());
}

TEST_F(UnlistedResultsTest, TheNextSearchExpandsCollapsedFamilies)
{
  open_page();
  search("l");
  results().collapse_all();
  search("li");
  EXPECT_TRUE(results().row_expanded(Gtk::TreePath("0")));
  results().collapse_all();
  search("lin"); // finds the same rows
  EXPECT_TRUE(results().row_expanded(Gtk::TreePath("0")));
}

TEST_F(UnlistedResultsTest, MarksAreShownInAllTreesWithNewResults)
{
  open_page();
  search("l");
  mark(kelp_greenling, 1);
  mark(lingcod, 2);
  mark(longfin_sculpin, 3);
  const auto check = [&](const char* text, const char* expected_found) {
    search(text);
    EXPECT_EQ(expected_found, found()) << text;
    EXPECT_EQ("Greenlings:*\n  12 Kelp Greenling = Single (1)\n", rows(panel().selected_filter));
    EXPECT_EQ("Sculpins:*\n  10 Longfin Sculpin = Many (11-100)*\n"
              "Greenlings:*\n  11 Lingcod = Few (2-10)*\n",
              listed_rows());
  };
  check("ling", "Greenlings:*\n  12 Kelp Greenling = Single (1)\n  11 Lingcod = Few (2-10)*\n");
  check("kelp", "Greenlings:*\n  12 Kelp Greenling = Single (1)\n");
  check("zzz", "");
  check("__all__", "Greenlings:*\n  12 Kelp Greenling = Single (1)\n  11 Lingcod = Few (2-10)*\n"
                   "Sculpins:*\n  10 Longfin Sculpin = Many (11-100)*\n");

  mark(kelp_greenling, 2);
  mark(lingcod, 0);
  EXPECT_EQ("Greenlings:*\n  12 Kelp Greenling = Few (2-10)\n  11 Lingcod = None*\n"
            "Sculpins:*\n  10 Longfin Sculpin = Many (11-100)*\n",
            found());
  EXPECT_EQ("Greenlings:*\n  12 Kelp Greenling = Few (2-10)\n", rows(panel().selected_filter));
}

TEST_F(UnlistedResultsTest, MarksAreShownInAllTreesWithAnotherView)
{
  application_dir.file("species-views.csv",
                       "viewid,speciesid,familyid\n1,10,F1\n1,11,F2\n2,10,F1\n2,12,F2\n");
  open_page();
  search("ling");
  mark(kelp_greenling, 1);
  mark(lingcod, 2);
  choose(*window->listed_panel->species_view, "With invertebrates");
  EXPECT_EQ("Greenlings:*\n  12 Kelp Greenling = Single (1)*\n  11 Lingcod = Few (2-10)\n",
            found());
  EXPECT_EQ("Greenlings:*\n  11 Lingcod = Few (2-10)\n", rows(panel().selected_filter));
  EXPECT_EQ("Sculpins:*\n  10 Longfin Sculpin = None*\n"
            "Greenlings:*\n  12 Kelp Greenling = Single (1)*\n",
            listed_rows());
  mark(kelp_greenling, 3);
  EXPECT_EQ("Greenlings:*\n  12 Kelp Greenling = Many (11-100)*\n  11 Lingcod = Few (2-10)\n",
            found());
}
