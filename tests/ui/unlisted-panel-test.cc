#include "support/dialogs.h"
#include "support/keys.h"
#include "support/main-loop.h"
#include "support/output.h"
#include "ui/listed-panel.h"
#include "ui/species-window.h"
#include "ui/survey-panel1.h"
#include "ui/survey-window.h"
#include "ui/unlisted-panel.h"

#include <filesystem>

namespace {

constexpr unsigned int left = 1;
constexpr unsigned int right = 3;

constexpr int kelp_greenling = 12; // in none of the Northwest's views
constexpr int lingcod = 11;        // in all of them

const char* const please_select =
    "Please select a survey location and type on the Survey Info Part 1 tab.";
const char* const all_northwest = "Greenlings:*\n  12 Kelp Greenling = None\n  11 Lingcod = None*\n"
                                  "Sculpins:*\n  10 Longfin Sculpin = None*\n";
const char* const all_florida = "Angelfishes:*\n  1 French Angelfish = None*\n"
                                "Snappers:*\n  3 Dog & Cat Snapper = None\n"
                                "  2 Snapper, Gray = None*\n";
const char* const no_rows = "";

class UnlistedPanelTest : public SpeciesWindowTest
{
public:
  UnlistedPanel& panel() const { return *window->unlisted_panel; }

  void open_page(const Glib::ustring& subregion, const Glib::ustring& survey_type)
  {
    open_survey(subregion, survey_type);
    go_to_page(panel().page);
  }
  // Two families: Greenlings with 12 and 11, Sculpins with 10. Only 12 is in no view.
  void open_northwest_page() { open_page("Northwest", "Northwest: abundance"); }
  // Two families: Angelfishes with 1, Snappers with 3 and 2. Only 3 is in no view.
  void open_florida_page() { open_page("Florida & Gulf", "Florida: abundance"); }

  void search(const Glib::ustring& text) const
  {
    panel().species_search->set_text(text);
    settle();
  }
  void search_in(const Glib::ustring& label) const
  {
    panel().species_search_by->set_active_text(label);
    EXPECT_EQ(label, panel().species_search_by->get_label());
    settle();
  }
  void search(const Glib::ustring& text, const Glib::ustring& label) const
  {
    search_in(label);
    search(text);
  }
  std::string found() const { return rows(panel().found_filter); }
  std::string selected() const { return rows(panel().selected_filter); }
  // Returns the visible headings above the results: "", "found", "none" or both.
  std::string headings() const
  {
    return std::string(panel().found_species_heading->get_visible() ? "found" : "") +
           (panel().no_found_species_heading->get_visible() ? "none" : "");
  }
  bool results_are_shown() const { return panel().found_species_box->get_visible(); }
  bool selection_is_shown() const { return panel().selected_species_box->get_visible(); }

  bool click_found(const char* path, unsigned int button) const
  {
    GdkEventButton event = press_in(*panel().found_species_tree, Gtk::TreePath(path), button);
    return panel().on_found_species_clicked(&event);
  }
  bool click_selected(const char* path, unsigned int button) const
  {
    GdkEventButton event = press_in(*panel().selected_species_tree, Gtk::TreePath(path), button);
    return panel().on_selected_species_clicked(&event);
  }
  // Chooses from the open menu, as the user does.
  void choose_in_menu(const Glib::ustring& label) const
  {
    if (auto* menu = close_open_menu())
      choose_item(*menu, label);
    else
      ADD_FAILURE() << "no menu is open";
  }
};

struct SearchCase {
  const char* by;
  const char* text;
  const char* expected;
  int count;
};

} // namespace

// --- before there is a survey ---

TEST_F(UnlistedPanelTest, StartsWithOnlyTheSearch)
{
  open_window();
  go_to_page(panel().page);
  EXPECT_FALSE(results_are_shown());
  EXPECT_FALSE(selection_is_shown());
  EXPECT_EQ("", headings());
  EXPECT_EQ(SEARCH_BY_COMMON_NAME, panel().search_by);
  EXPECT_EQ(0, panel().species_search_by->get_active_row_number());
  EXPECT_EQ("Common Name", panel().species_search_by->get_label());
  EXPECT_EQ(please_select, panel().unlisted_instructions->get_label());
}

TEST_F(UnlistedPanelTest, HasItsColumnsFromTheStart)
{
  open_window();
  const char* const titles = "ID|Common + Scientific Names|Number seen (click to change)";
  EXPECT_EQ(titles, titles_of(*panel().found_species_tree));
  EXPECT_EQ(titles, titles_of(*panel().selected_species_tree));

  choose_subregion("Northwest");
  choose_survey_type("Northwest: abundance");
  EXPECT_EQ(titles, titles_of(*panel().found_species_tree));
  EXPECT_EQ(titles, titles_of(*panel().selected_species_tree));
}

TEST_F(UnlistedPanelTest, AcceptsASearchWithoutALocation)
{
  open_window();
  ASSERT_EQ(nullptr, window->survey.region_fish);
  EXPECT_EQ("", output_of(1, [&] { search("snapper"); }));
  EXPECT_FALSE(results_are_shown());
  EXPECT_EQ(0U, panel().species_matched.size());
  search("__all__");
  panel().refilter();
  EXPECT_FALSE(results_are_shown());
  EXPECT_EQ(no_rows, found());
}

TEST_F(UnlistedPanelTest, AsksForASurveyTypeAndClearsTheSearch)
{
  open_window();
  search("lingcod");
  choose_subregion("Northwest");
  EXPECT_EQ(please_select, panel().unlisted_instructions->get_label());
  EXPECT_EQ("", panel().species_search->get_text());

  search("lingcod");
  EXPECT_FALSE(results_are_shown());
  choose_survey_type("Northwest: abundance");
  EXPECT_TRUE(results_are_shown()) << "searches now for the text that was typed before";
  EXPECT_EQ("Greenlings:*\n  11 Lingcod = None*\n", found());
}

TEST_F(UnlistedPanelTest, ExplainsTheSearch)
{
  open_northwest_page();
  EXPECT_EQ("Search for a species to add that was not found on the Listed Species page - "
            "<b>fish only, please</b>.",
            panel().unlisted_instructions->get_label());
  EXPECT_EQ("Search for a species to add that was not found on the Listed Species page - "
            "fish only, please.",
            panel().unlisted_instructions->get_text());
}

// --- results of a search ---

TEST_F(UnlistedPanelTest, FindsWordsInAnyOrderAndCase)
{
  open_florida_page();
  const char* const gray = "Snappers:*\n  2 Snapper, Gray = None*\n";
  const char* const both = "Snappers:*\n  3 Dog & Cat Snapper = None\n  2 Snapper, Gray = None*\n";
  const struct {
    const char* text;
    const char* expected;
    int count;
  } cases[] = {
      {"gray snap", gray, 1},      {"GRAY SNAP", gray, 1}, {"snapper, gray", gray, 1},
      {"  gray   snap ", gray, 1}, {"apper", both, 2},     {"gray snap dog", no_rows, 0},
      {"snappers", no_rows, 0}, // the name of the family
      {"griseus", no_rows, 0},     {" ", all_florida, 3},
  };
  for (const auto& c : cases) {
    search(c.text);
    EXPECT_TRUE(results_are_shown()) << c.text;
    EXPECT_EQ(c.expected, found()) << c.text;
    EXPECT_EQ(c.count, panel().num_found) << c.text;
    EXPECT_EQ(c.count ? "found" : "none", headings()) << c.text;
  }
}

TEST_F(UnlistedPanelTest, SearchesTheKindOfNameThatIsChosen)
{
  open_florida_page();
  const char* const gray = "Snappers:*\n  2 Snapper, Gray = None*\n";
  const SearchCase cases[] = {
      {"Common Name", "gray", gray, 1},
      {"Common Name", "lutjanus", no_rows, 0},
      {"Scientific Name", "GRISEUS lut", gray, 1},
      {"Scientific Name", "gray", no_rows, 0},
      {"Spanish Name", "prieto", gray, 1},
      {"Spanish Name", "JOCÚ", "Snappers:*\n  3 Dog & Cat Snapper = None\n", 1},
      {"Spanish Name", "gray", no_rows, 0},
      {"Common + Scientific Names", "gray griseus", gray, 1},
      {"Common + Scientific Names", "gray <i>(lutjanus", gray, 1},
      {"Common + Scientific Names", "prieto", no_rows, 0},
      {"Family Name", "gray", no_rows, 0},
      {"Species Code", "2", gray, 1},
      {"Species Code", "gray", no_rows, 0},
  };
  for (const auto& c : cases) {
    search(c.text, c.by);
    EXPECT_EQ(c.expected, found()) << c.by << ": " << c.text;
    EXPECT_EQ(c.count, panel().num_found) << c.by << ": " << c.text;
  }
}

TEST_F(UnlistedPanelTest, SearchesAlsoTheMarkupOfARow)
{
  open_florida_page();
  const char* const dog = "Snappers:*\n  3 Dog & Cat Snapper = None\n";
  const char* const shaded =
      "Snappers:*\n  3 Dog & Cat Snapper = None\n  2 Snapper, Gray = None*\n";
  const SearchCase cases[] = {
      {"Common Name", "amp", dog, 1},
      {"Common Name", "&", dog, 1},
      {"Common Name", "dog & cat", dog, 1},
      {"Common Name", "span", shaded, 2},
      {"Common Name", "#C60", dog, 1},
      {"Common Name", "bold", no_rows, 0},
      {"Spanish Name", "background", shaded, 2},
      {"Family Name", "bold", all_florida, 3},
  };
  for (const auto& c : cases) {
    search(c.text, c.by);
    EXPECT_EQ(c.count, panel().num_found) << c.by << ": " << c.text;
    EXPECT_EQ(c.expected, found()) << c.by << ": " << c.text;
  }
}

TEST_F(UnlistedPanelTest, FindsACodeAsANumber)
{
  open_northwest_page();
  search_in("Species Code");
  const char* const greenling = "Greenlings:*\n  12 Kelp Greenling = None\n";
  const struct {
    const char* text;
    const char* expected;
  } cases[] = {
      {"12", greenling}, {"0012", greenling}, {"12abc", greenling},    {"12 11", greenling},
      {"1", no_rows},    {"abc", no_rows},    {" 12", no_rows},        {"-12", no_rows},
      {"13", no_rows},   {"99999", no_rows},  {"4294967308", no_rows},
  };
  for (const auto& c : cases) {
    search(c.text);
    EXPECT_EQ(c.expected, found()) << c.text;
    EXPECT_EQ(c.expected == greenling ? 1 : 0, panel().num_found) << c.text;
  }
}

TEST_F(UnlistedPanelTest, FindsCodeZeroForTextWithoutANumber)
{
  application_dir.file("PAC-species-info.csv",
                       "speciesid,scientificname,commonname,familyid,invertebratetype,rarefishind\n"
                       "0,Piscis nullus,Unknown Fish,F1,0,0\n12,Piscis,Fish,F1,0,0\n");
  open_northwest_page();
  search_in("Species Code");
  for (const char* text : {"0", "abc", " ", " 12", "000"}) {
    search(text);
    EXPECT_EQ("Sculpins:\n  0 Unknown Fish = None\n", found()) << text;
  }
}

TEST_F(UnlistedPanelTest, SpanishSearchesMatchOnlyTagsIfThereAreNoSpanishNames)
{
  open_northwest_page();
  search_in("Spanish Name");
  search("lingcod");
  EXPECT_EQ(no_rows, found());
  search("span");
  EXPECT_EQ("Greenlings:*\n  11 Lingcod = None*\n", found()) << "the one that is shaded";
}

TEST_F(UnlistedPanelTest, FindsAllSpeciesOfAFamilyByItsShownNames)
{
  open_florida_page();
  search_in("Family Name");
  const char* const snappers =
      "Snappers:*\n  3 Dog & Cat Snapper = None\n  2 Snapper, Gray = None*\n";
  const struct {
    Gtk::RadioButton* display;
    const char* text;
    const char* expected;
  } cases[] = {
      {window->listed_panel->name_display_common, "nappe", snappers},
      {window->listed_panel->name_display_common, "lutjanidae", no_rows},
      {window->listed_panel->name_display_scientific, "LUTJAN", snappers},
      {window->listed_panel->name_display_scientific, "snappers", no_rows},
      {window->listed_panel->name_display_both, "lutjanidae snappers", snappers},
      {window->listed_panel->name_display_both, "gray", no_rows},
  };
  for (const auto& c : cases) {
    c.display->set_active();
    search("");
    search(c.text);
    EXPECT_EQ(c.expected, found()) << c.text;
    EXPECT_EQ(c.expected == snappers ? 2 : 0, panel().num_found) << c.text;
  }
}

TEST_F(UnlistedPanelTest, SearchesAFamilysSpanishCellIfItIsShown)
{
  open_florida_page();
  search_in("Family Name");
  const char* const empty_cell = "\"></span>"; // a family's Spanish cell has no name
  search(empty_cell);
  EXPECT_EQ(0, panel().num_found);
  window->listed_panel->spanish_enable->set_active();
  panel().run_search();
  EXPECT_EQ(3, panel().num_found);
}

TEST_F(UnlistedPanelTest, ShowsAllRowsWithTheHeadingForNone)
{
  open_northwest_page();
  for (const char* label : {"Common Name", "Species Code", "Family Name"}) {
    for (const char* text : {"__all__", "__ALL__", "__aLl__"}) {
      search("", label);
      search(text);
      EXPECT_EQ(all_northwest, found()) << text;
      EXPECT_EQ(unlisted_rows(), found()) << text;
      EXPECT_EQ(0, panel().num_found) << text;
      EXPECT_EQ("none", headings()) << text;
      EXPECT_TRUE(results_are_shown()) << text;
      EXPECT_EQ(SEARCH_BY_ALL, panel().search_by);
    }
  }
  search("__all__ ", "Common Name");
  EXPECT_EQ(no_rows, found()) << "with a blank, it is an ordinary word";
}

TEST_F(UnlistedPanelTest, FindsAnythingAgainAfterAllRows)
{
  open_northwest_page();
  search("__all__");
  search("kelp");
  EXPECT_EQ("Greenlings:*\n  12 Kelp Greenling = None\n", found());
  EXPECT_EQ(1, panel().num_found);
}

TEST_F(UnlistedPanelTest, ShowsFoundFamiliesExpanded)
{
  open_northwest_page();
  search("ling");
  EXPECT_TRUE(panel().found_species_tree->row_expanded(Gtk::TreePath("0")));
  panel().found_species_tree->collapse_all();
  search("lin");
  EXPECT_TRUE(panel().found_species_tree->row_expanded(Gtk::TreePath("0")));
}

TEST_F(UnlistedPanelTest, ShowsNewResultsFromTheTop)
{
  application_dir.use_shipped_data();
  open_window();
  choose_subregion(window->survey_panel1->subregion->items.front().second);
  window->survey_panel1->survey_subtype->set_active(0);
  go_to_page(panel().page);
  search("__all__");
  let_draw(*panel().found_species_tree);
  const auto adjustment = panel().found_species_tree->get_vadjustment();
  adjustment->set_value(adjustment->get_upper() - adjustment->get_page_size());
  let_draw(*panel().found_species_tree);
  EXPECT_GT(adjustment->get_value(), 0);
  const double before = adjustment->get_value();
  panel().refilter();
  let_draw(*panel().found_species_tree);
  EXPECT_EQ(before, adjustment->get_value()) << "a mark does not scroll the tree";
  search("a");
  EXPECT_EQ(0, adjustment->get_value());
}

TEST_F(UnlistedPanelTest, TheSearchFieldDoesNotMoveDuringTyping)
{
  open_northwest_page();
  const auto place = [&] {
    window->check_resize(); // lays out at once, not with the next frame
    return panel().search_box->get_allocation().get_y();
  };
  const int unmarked = place();
  search("l");
  EXPECT_EQ(unmarked, place());
  mark(kelp_greenling, 1);
  const int marked = place();
  EXPECT_LT(unmarked, marked);
  search("");
  EXPECT_EQ(marked, place());
}

TEST_F(UnlistedPanelTest, CountsEachSpeciesOnce)
{
  open_northwest_page();
  search("l");
  EXPECT_EQ(3, panel().num_found);
  const auto check_all_rows = [&] {
    window->unlisted_model->foreach_iter([&](const Gtk::TreeIter& row) {
      panel().check_visible_found(row);
      return false;
    });
  };
  check_all_rows();
  check_all_rows();
  EXPECT_EQ(3, panel().num_found);
  EXPECT_EQ("search found 3\n", output_of(1, [&] { panel().refilter(); }));
}

TEST_F(UnlistedPanelTest, ShowsNeitherHeadingBeforeTheFirstSearch)
{
  open_northwest_page();
  EXPECT_EQ("", headings());
  window->listed_panel->species_view->set_label("With invertebrates");
  EXPECT_EQ("", headings());
}

TEST_F(UnlistedPanelTest, ChangesTheHeadingsOnlyBySearches)
{
  open_northwest_page();
  search("ling");
  EXPECT_EQ("found", headings());
  search("");
  window->listed_panel->species_view->set_label("With invertebrates");
  EXPECT_EQ("found", headings());
  choose_survey_type("Northwest: species only");
  EXPECT_EQ("found", headings());

  search("no such fish");
  EXPECT_EQ("none", headings());
  search("");
  window->listed_panel->species_view->set_label("Common");
  EXPECT_EQ("none", headings());
}

TEST_F(UnlistedPanelTest, HidesTheResultsOfAnEmptySearchWithoutSearching)
{
  open_northwest_page();
  search("kelp");
  EXPECT_EQ("", output_of(1, [&] { search(""); }));
  EXPECT_FALSE(results_are_shown());
  EXPECT_EQ("Greenlings:*\n  12 Kelp Greenling = None\n", found()) << "hidden, but unchanged";
  EXPECT_EQ(1, panel().num_found);
  EXPECT_TRUE(panel().search_words.empty());

  search("lingcod");
  EXPECT_TRUE(results_are_shown());
  EXPECT_EQ("Greenlings:*\n  11 Lingcod = None*\n", found());
}

TEST_F(UnlistedPanelTest, ANewKindOfNameSearchesAtOnce)
{
  open_northwest_page();
  search("ophiodon");
  EXPECT_EQ(no_rows, found());
  EXPECT_EQ("none", headings());
  search_in("Scientific Name");
  EXPECT_EQ("Greenlings:*\n  11 Lingcod = None*\n", found());
  EXPECT_EQ("found", headings());
  search_in("Species Code");
  EXPECT_EQ(no_rows, found());
}

TEST_F(UnlistedPanelTest, TreatsAnUnknownKindOfNameAsCommon)
{
  open_northwest_page();
  panel().species_search_by->append("Nickname");
  search_in("Nickname");
  EXPECT_EQ("\nSearching for \"kelp\" (\"kelp\") by Unknown: Nickname (1):\nsearch found 1\n",
            output_of(1, [&] { search("kelp"); }));
}

TEST_F(UnlistedPanelTest, TracesASearch)
{
  open_northwest_page();
  EXPECT_EQ("", output_of(0, [&] { search("kelp"); }));
  EXPECT_EQ("\nSearching for \"ling x\" (\"ling\" \"x\") by Common Name (1):\nsearch found 0\n",
            output_of(1, [&] { search("LING x"); }));
  EXPECT_EQ("\nSearching for \"__all__\" (\"__all__\") by (all) Common Name (7):\n"
            "search found 0\n",
            output_of(1, [&] { search("__ALL__"); }));
}

TEST_F(UnlistedPanelTest, CannotMatchASpeciesByItsFamilysName)
{
  // The child process starts over, since a display cannot be shared.
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  open_northwest_page();
  const auto judge = [&] {
    std::filesystem::remove_all(application_dir.root); // the child exits without cleaning up
    panel().search_by = SEARCH_BY_FAMILY_NAME;
    answer_next_dialog(Gtk::RESPONSE_CLOSE, [&] { panel().is_species_found(1); });
  };
  EXPECT_EXIT(judge(), testing::ExitedWithCode(47),
              "Uh oh, Assertion failed at .*unlisted-panel.cc line [0-9]+: "
              "search_by != SEARCH_BY_FAMILY_NAME");
}

// --- marking ---

TEST_F(UnlistedPanelTest, AMarkedSpeciesOutsideTheViewIsSelected)
{
  open_northwest_page();
  search("ling");
  EXPECT_FALSE(selection_is_shown());
  EXPECT_TRUE(click_found("0:0", left));
  EXPECT_EQ(kelp_greenling, window->abundance_target);
  choose_in_menu("Few (2-10)");
  EXPECT_EQ(2, window->survey.abundances.at(kelp_greenling));
  EXPECT_TRUE(selection_is_shown());
  EXPECT_EQ("Greenlings:*\n  12 Kelp Greenling = Few (2-10)\n", selected());
  EXPECT_EQ("Greenlings:*\n  12 Kelp Greenling = Few (2-10)\n  11 Lingcod = None*\n", found())
      << "and it stays among the results";
  EXPECT_TRUE(panel().selected_species_tree->row_expanded(Gtk::TreePath("0")));
  EXPECT_GE(panel().num_selected, 1);
  EXPECT_EQ(2, panel().num_found);
}

TEST_F(UnlistedPanelTest, ASpeciesMarkedNoneIsNoLongerSelected)
{
  open_northwest_page();
  search("kelp");
  mark(kelp_greenling, 2);
  EXPECT_TRUE(click_selected("0:0", right));
  choose_in_menu("None");
  EXPECT_EQ(0, window->survey.abundances.at(kelp_greenling));
  EXPECT_FALSE(selection_is_shown());
  EXPECT_EQ(no_rows, selected());
  EXPECT_EQ(0, panel().num_selected);
  EXPECT_EQ("Greenlings:*\n  12 Kelp Greenling = None\n", found());
}

TEST_F(UnlistedPanelTest, ASpeciesOfTheViewIsFoundButNeverSelected)
{
  open_northwest_page();
  search("lingcod");
  EXPECT_TRUE(click_found("0:0", left));
  choose_in_menu("Single (1)");
  EXPECT_EQ(1, window->survey.abundances.at(lingcod));
  EXPECT_FALSE(selection_is_shown());
  EXPECT_EQ(no_rows, selected());
  EXPECT_EQ("Greenlings:*\n  11 Lingcod = Single (1)*\n", found());
  EXPECT_EQ("Sculpins:*\n  10 Longfin Sculpin = None*\nGreenlings:*\n  11 Lingcod = Single (1)*\n",
            listed_rows());
}

TEST_F(UnlistedPanelTest, KeepsTheCursorOfTheFoundTreeAfterAMark)
{
  open_northwest_page();
  search("l");
  auto& tree = *panel().found_species_tree;
  tree.set_cursor(Gtk::TreePath("0:0"));
  GdkEventKey event = key_press(GDK_KEY_Return);
  EXPECT_TRUE(panel().on_found_species_kb_event(&event));
  choose_in_menu("Many (11-100)");
  EXPECT_EQ("0:0", cursor_path(tree).to_string());
  EXPECT_EQ("Greenlings:*\n  12 Kelp Greenling = Many (11-100)\n", selected());
}

TEST_F(UnlistedPanelTest, SelectsAndDeselectsSeveralSpeciesOfSeveralFamilies)
{
  application_dir.file("species-views.csv", "viewid,speciesid,familyid\n1,11,F2\n");
  open_northwest_page();
  mark(10, 1);
  mark(12, 2);
  EXPECT_EQ("Greenlings:*\n  12 Kelp Greenling = Few (2-10)\n"
            "Sculpins:\n  10 Longfin Sculpin = Single (1)\n",
            selected());
  mark(12, 0);
  EXPECT_EQ("Sculpins:\n  10 Longfin Sculpin = Single (1)\n", selected());
  EXPECT_TRUE(selection_is_shown());
  mark(12, 3);
  mark(10, 0);
  EXPECT_EQ("Greenlings:*\n  12 Kelp Greenling = Many (11-100)\n", selected());
  mark(12, 0);
  EXPECT_FALSE(selection_is_shown());
}

TEST_F(UnlistedPanelTest, AMarkWithoutASearchLeavesTheResultsHidden)
{
  open_northwest_page();
  EXPECT_EQ("search found 0\nabun_menu: species id 12 abundance = 1\n",
            output_of(1, [&] { mark(kelp_greenling, 1); }));
  EXPECT_FALSE(results_are_shown());
  EXPECT_TRUE(selection_is_shown());
}

// --- clicks and keys ---

TEST_F(UnlistedPanelTest, ClicksCollapseFamiliesInBothTrees)
{
  open_northwest_page();
  mark(kelp_greenling, 1);
  search("ling");
  const Gtk::TreePath family("0");
  EXPECT_TRUE(click_found("0", left));
  EXPECT_FALSE(panel().found_species_tree->row_expanded(family));
  EXPECT_TRUE(click_found("0", left));
  EXPECT_TRUE(panel().found_species_tree->row_expanded(family));
  EXPECT_TRUE(click_found("0", right));
  EXPECT_TRUE(panel().found_species_tree->row_expanded(family));

  EXPECT_TRUE(click_selected("0", left));
  EXPECT_FALSE(panel().selected_species_tree->row_expanded(family));
  EXPECT_EQ(nullptr, close_open_menu());
}

TEST_F(UnlistedPanelTest, ReturnRightAndTheMenuKeyOpenTheMenuInBothTrees)
{
  open_northwest_page();
  mark(kelp_greenling, 1);
  search("ling");
  panel().found_species_tree->set_cursor(Gtk::TreePath("0:1"));
  panel().selected_species_tree->set_cursor(Gtk::TreePath("0:0"));
  for (const guint keyval : {guint{GDK_KEY_Return}, guint{GDK_KEY_Right}}) {
    GdkEventKey event = key_press(keyval);
    EXPECT_TRUE(panel().on_found_species_kb_event(&event));
    EXPECT_EQ(lingcod, window->abundance_target);
    EXPECT_EQ(window->abundance_menus[1], close_open_menu()) << keyval;
    EXPECT_TRUE(panel().on_selected_species_kb_event(&event));
    EXPECT_EQ(kelp_greenling, window->abundance_target);
    EXPECT_EQ(window->abundance_menus[1], close_open_menu()) << keyval;
  }
  EXPECT_TRUE(panel().on_found_species_kb_activated());
  EXPECT_EQ(lingcod, window->abundance_target);
  EXPECT_NE(nullptr, close_open_menu());
  EXPECT_TRUE(panel().on_selected_species_kb_activated());
  EXPECT_EQ(kelp_greenling, window->abundance_target);
  EXPECT_NE(nullptr, close_open_menu());

  GdkEventKey other = key_press(GDK_KEY_Left);
  EXPECT_FALSE(panel().on_found_species_kb_event(&other));
  EXPECT_FALSE(panel().on_selected_species_kb_event(&other));
}

TEST_F(UnlistedPanelTest, NothingHappensWithoutARow)
{
  open_window();
  GdkEventKey event = key_press(GDK_KEY_Return);
  EXPECT_FALSE(panel().on_found_species_kb_event(&event));
  EXPECT_FALSE(panel().on_selected_species_kb_activated());
  EXPECT_FALSE(panel().do_found_species_line_trigger(Gtk::TreePath("0:5"), 1, 0));
  EXPECT_FALSE(panel().do_selected_species_line_trigger(Gtk::TreePath(), 1, 0));
}

TEST_F(UnlistedPanelTest, ReportsAClickInAnotherWindowWithTheNameOfTheTree)
{
  open_northwest_page();
  mark(kelp_greenling, 1);
  search("ling");
  GdkEventButton event = press_in(*panel().found_species_tree, Gtk::TreePath("0"), left);
  event.window = window->get_window()->gobj();
  EXPECT_EQ(0U, output_of(0, [&] {
                  panel().on_found_species_clicked(&event);
                }).find("hmm, found_species click in some other window? "));
  EXPECT_EQ(0U, output_of(0, [&] {
                  panel().on_selected_species_clicked(&event);
                }).find("hmm, selected_species click in some other window? "));
}

TEST_F(UnlistedPanelTest, TracesOnlyThePathOfAClick)
{
  open_northwest_page();
  search("ling");
  EXPECT_EQ("got path: 0\n", output_of(10, [&] { click_found("0", right); }));
}

TEST_F(UnlistedPanelTest, AnUploadedSurveyOpensNoMenu)
{
  open_northwest_page();
  mark(kelp_greenling, 1);
  search("ling");
  window->survey.is_uploaded = true;
  window->abundance_target = -1;
  EXPECT_TRUE(click_found("0:0", left));
  EXPECT_TRUE(click_selected("0:0", right));
  EXPECT_TRUE(panel().on_found_species_kb_activated());
  EXPECT_EQ(nullptr, close_open_menu());
  EXPECT_EQ(-1, window->abundance_target);
  EXPECT_TRUE(click_found("0", left));
  EXPECT_FALSE(panel().found_species_tree->row_expanded(Gtk::TreePath("0")));
}

TEST_F(UnlistedPanelTest, ShowsIdsOfSpeciesAndLabelsFamilies)
{
  open_northwest_page();
  mark(kelp_greenling, 1);
  search("kelp");
  panel().render_found_species_id(nullptr, panel().found_filter->get_iter("0:0"));
  EXPECT_EQ("0012:", panel().found_parts.id_cell.property_text().get_value());
  panel().render_selected_species_id(nullptr, panel().selected_filter->get_iter("0"));
  EXPECT_EQ("Family", panel().selected_parts.id_cell.property_text().get_value());
}

// --- columns ---

TEST_F(UnlistedPanelTest, ShowsTheNamesOfTheListedPageAtOnce)
{
  open_florida_page();
  auto& listed = *window->listed_panel;
  auto* const name_column = panel().found_species_tree->get_column(1);
  listed.name_display_scientific->set_active();
  EXPECT_EQ("ID|Scientific Name|Number seen (click to change)",
            titles_of(*panel().found_species_tree));
  listed.spanish_enable->set_active();
  listed.name_display_common->set_active();
  for (auto* tree : {panel().found_species_tree, panel().selected_species_tree})
    EXPECT_EQ("ID|Common Name|Spanish Name|Number seen (click to change)", titles_of(*tree));
  EXPECT_EQ(name_column, panel().found_species_tree->get_column(1));
  EXPECT_TRUE(window->survey.show_common_name);
  EXPECT_FALSE(window->survey.show_scientific_name);
  EXPECT_TRUE(window->survey.show_spanish_name);
}

TEST_F(UnlistedPanelTest, TypingInATreeStillSearchesNamesWhenTheStoresAreRefilled)
{
  open_northwest_page();
  choose(*window->listed_panel->species_view, "With invertebrates");
  search("__all__");
  auto& tree = *panel().found_species_tree;
  tree.grab_focus();
  wait_until("the tree has the keyboard", [&] { return tree.has_focus(); });
  type_text(*window, "kelp");
  const auto row = tree.get_model()->get_iter(cursor_path(tree));
  ASSERT_TRUE(row);
  EXPECT_EQ(12, row->get_value(window->species_columns.col_id));
}

// --- changes of view, type and place ---

TEST_F(UnlistedPanelTest, KeepsTheSearchWhenTheViewChanges)
{
  open_page("Northwest", "Northwest: fish and invertebrates");
  search("star");
  EXPECT_EQ(no_rows, found());
  EXPECT_EQ("none", headings());
  choose(*window->listed_panel->species_view, "With invertebrates");
  EXPECT_EQ("star", panel().species_search->get_text());
  EXPECT_EQ("Sea Stars:*\n  21 Mottled Star = None*\n  20 Ochre Star = None*\n", found());
  EXPECT_EQ("found", headings());
  EXPECT_EQ(2, panel().num_found);
  EXPECT_TRUE(panel().found_species_tree->row_expanded(Gtk::TreePath("0")));
}

TEST_F(UnlistedPanelTest, SelectsByTheCurrentView)
{
  application_dir.file("species-views.csv",
                       "viewid,speciesid,familyid\n1,10,F1\n1,11,F2\n2,10,F1\n2,12,F2\n");
  open_northwest_page();
  mark(kelp_greenling, 1);
  mark(lingcod, 2);
  EXPECT_EQ("Greenlings:*\n  12 Kelp Greenling = Single (1)\n", selected());
  choose(*window->listed_panel->species_view, "With invertebrates");
  EXPECT_EQ("Greenlings:*\n  11 Lingcod = Few (2-10)\n", selected());
  EXPECT_TRUE(panel().selected_species_tree->row_expanded(Gtk::TreePath("0")));
  mark(lingcod, 0);
  EXPECT_FALSE(selection_is_shown());
  choose(*window->listed_panel->species_view, "Common");
  EXPECT_TRUE(selection_is_shown());
  EXPECT_EQ("Greenlings:*\n  12 Kelp Greenling = Single (1)\n", selected());
}

TEST_F(UnlistedPanelTest, KeepsTheSearchAndTheMarksWhenTheSurveyTypeChanges)
{
  open_northwest_page();
  search("ling");
  mark(kelp_greenling, 1);
  choose_survey_type("Northwest: species only");
  EXPECT_EQ("ling", panel().species_search->get_text());
  EXPECT_TRUE(results_are_shown());
  EXPECT_EQ("Greenlings:*\n  12 Kelp Greenling = Seen\n  11 Lingcod = None*\n", found());
  EXPECT_EQ("Greenlings:*\n  12 Kelp Greenling = Seen\n", selected());
  EXPECT_TRUE(selection_is_shown());
  EXPECT_EQ(2, panel().num_found);
}

TEST_F(UnlistedPanelTest, FamilySearchesSurviveAChangeOfType)
{
  open_northwest_page();
  search("greenlings hexagr", "Family Name");
  choose_survey_type("Northwest: fish and invertebrates");
  EXPECT_EQ(2, panel().num_found) << "the search uses the names that the page shows";
  EXPECT_EQ("found", headings());
}

TEST_F(UnlistedPanelTest, ClearsThePageForANewLocation)
{
  open_northwest_page();
  search("ling");
  choose_subregion("Florida & Gulf");
  EXPECT_EQ("", panel().species_search->get_text());
  EXPECT_EQ(please_select, panel().unlisted_instructions->get_label());
  EXPECT_FALSE(results_are_shown());
  EXPECT_EQ(no_rows, found());
  EXPECT_FALSE(selection_is_shown());

  choose_survey_type("Florida: abundance");
  search("snap");
  EXPECT_EQ("Snappers:*\n  3 Dog & Cat Snapper = None\n  2 Snapper, Gray = None*\n", found());
  EXPECT_EQ(4U, panel().species_matched.size());
  choose_subregion("Northwest");
  choose_survey_type("Northwest: abundance");
  search("ling");
  EXPECT_EQ("Greenlings:*\n  12 Kelp Greenling = None\n  11 Lingcod = None*\n", found());
}

TEST_F(UnlistedPanelTest, ClearsTheSelectionForANewLocation)
{
  open_northwest_page();
  mark(kelp_greenling, 1);
  answer_next_dialog(Gtk::RESPONSE_ACCEPT, [&] { choose_subregion("California"); });
  EXPECT_FALSE(selection_is_shown());
  EXPECT_EQ(no_rows, selected());
}

TEST_F(UnlistedPanelTest, KeepsTheSearchIfASurveyTypeIsChosen)
{
  open_northwest_page();
  search("kelp");
  panel().setup_for_subregion("PNW");
  EXPECT_EQ("kelp", panel().species_search->get_text());
  EXPECT_EQ(1, panel().num_found);
}

// --- stores that are being filled ---

TEST_F(UnlistedPanelTest, DetachesAndAttachesTheStore)
{
  open_northwest_page();
  mark(kelp_greenling, 1);
  search("ling");
  const std::string found_before = found();
  panel().detach_models();
  EXPECT_FALSE(panel().found_filter);
  EXPECT_FALSE(panel().selected_filter);
  EXPECT_FALSE(panel().found_species_tree->get_model());
  EXPECT_FALSE(panel().selected_species_tree->get_model());

  panel().attach_models();
  EXPECT_EQ(found_before, found());
  EXPECT_EQ("Greenlings:*\n  12 Kelp Greenling = Single (1)\n", selected());
  EXPECT_EQ(2, panel().num_found);
  EXPECT_TRUE(selection_is_shown());
  EXPECT_TRUE(panel().found_species_tree->row_expanded(Gtk::TreePath("0")));
}

TEST_F(UnlistedPanelTest, IgnoresRowsThatTheRegionLacks)
{
  open_northwest_page();
  auto* const fish = window->survey.region_fish;
  for (const char* text : {"ling", "12", "__all__"}) {
    window->survey.region_fish = nullptr;
    search("");
    search(text, "Species Code");
    EXPECT_EQ(0U, panel().species_matched.size());
    panel().refilter();
    EXPECT_EQ(0, panel().num_found);
  }
  window->survey.region_fish = fish;
  panel().run_search();
  search("12");
  EXPECT_EQ(1, panel().num_found);
}

TEST_F(UnlistedPanelTest, SearchesTheShippedSpecies)
{
  application_dir.use_shipped_data();
  open_window();
  auto& places = *window->survey_panel1->subregion;
  for (const auto& [id, place] : std::vector(places.items)) {
    choose_subregion(place);
    if (window->survey_panel1->survey_subtype->items.empty())
      continue;
    window->survey_panel1->survey_subtype->set_active(0);
    search("a");
    int species = 0;
    window->unlisted_model->foreach_iter([&](const Gtk::TreeIter& row) {
      const auto name = row->get_value(window->species_columns.col_common).lowercase();
      species += row->get_value(window->species_columns.col_id) >= 0 &&
                 name.find("a") != Glib::ustring::npos;
      return false;
    });
    EXPECT_EQ(species, panel().num_found) << place;
    EXPECT_GT(species, 0) << place;
  }
}

// --- without a mouse ---

namespace {

class UnlistedKeysTest : public UnlistedPanelTest
{
public:
  void search_by_keys(const char* text)
  {
    auto& field = *panel().species_search;
    field.grab_focus();
    wait_until("the search has the keyboard", [&] { return field.has_focus(); });
    type_text(*window, text);
  }
  void press(unsigned int keyval) { press_key(*window, keyval); }
  Gtk::TreeView& results() { return *panel().found_species_tree; }
};

} // namespace

TEST_F(UnlistedKeysTest, ReturnAndDownGoToTheFirstSpeciesFound)
{
  open_northwest_page();
  for (const guint key : {guint{GDK_KEY_Return}, guint{GDK_KEY_Down}}) {
    search_by_keys("kelp");
    press(key);
    EXPECT_TRUE(results().is_focus());
    EXPECT_EQ("0:0", cursor_path(results()).to_string());
    EXPECT_TRUE(results().row_expanded(Gtk::TreePath("0")));
    search("");
  }
}

TEST_F(UnlistedKeysTest, TwoMoreKeysMarkAFoundSpecies)
{
  open_northwest_page();
  search_by_keys("kelp");
  press(GDK_KEY_Return);
  press(GDK_KEY_Return);
  wait_until("the menu is open", [&] { return window->current_abundance_menu->get_mapped(); });
  press(GDK_KEY_f);
  EXPECT_EQ((std::map<int, int>{{kelp_greenling, 2}}), window->survey.abundances);
  EXPECT_TRUE(results().is_focus());
}

TEST_F(UnlistedKeysTest, TheFocusStaysIfNothingIsFound)
{
  open_northwest_page();
  for (const char* text : {"", "zzz"}) {
    search_by_keys(text);
    press(GDK_KEY_Down);
    press(GDK_KEY_Return);
    EXPECT_TRUE(panel().species_search->is_focus()) << text;
  }
}

TEST_F(UnlistedKeysTest, EscapeClearsTheSearch)
{
  open_northwest_page();
  search_by_keys("kelp");
  EXPECT_EQ("edit-clear-symbolic",
            panel().species_search->get_icon_name(Gtk::ENTRY_ICON_SECONDARY));
  press(GDK_KEY_Escape);
  EXPECT_EQ("", panel().species_search->get_text());
  EXPECT_FALSE(results_are_shown());
}

TEST_F(UnlistedKeysTest, TheFocusGoesToTheSearchWhenTheLastMarkedSpeciesIsRemoved)
{
  open_northwest_page();
  mark(kelp_greenling, 1);
  auto& tree = *panel().selected_species_tree;
  tree.set_cursor(Gtk::TreePath("0:0"));
  tree.grab_focus();
  settle();
  press(GDK_KEY_Return);
  wait_until("the menu is open", [&] { return window->current_abundance_menu->get_mapped(); });
  press(GDK_KEY_n);
  EXPECT_FALSE(selection_is_shown());
  EXPECT_TRUE(panel().species_search->is_focus());
}
