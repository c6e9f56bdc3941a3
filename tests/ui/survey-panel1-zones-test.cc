#include "support/keys.h"
#include "support/main-loop.h"
#include "support/output.h"
#include "support/window-fixture.h"
#include "ui/survey-panel1.h"
#include "ui/survey-window.h"
#include "ui/tree-rows.h"

namespace {

class ZoneTest : public WindowTest
{
public:
  SurveyPanel1* open_panel(const Glib::ustring& place = "Northwest")
  {
    panel = open_window()->survey_panel1;
    if (!place.empty())
      choose_subregion(place);
    go_to_page(panel->page);
    return panel;
  }

  // Returns the visible rows, indented by two blanks for each level.
  std::string visible_rows() const
  {
    std::string text;
    for (const auto& row : panel->geog_store->children())
      add_visible(row, text);
    return text;
  }
  void add_visible(const Gtk::TreeRow& row, std::string& text) const
  {
    const Gtk::TreePath path = panel->geog_store->get_path(row);
    const auto depth = static_cast<std::size_t>(path.size() - 1);
    const Glib::ustring label = row[panel->geog_columns.col_label];
    text += std::string(2 * depth, ' ') + label.raw() + "\n";
    if (panel->geog_tree->row_expanded(path))
      for (const auto& child : row.children())
        add_visible(child, text);
  }
  // Puts the cursor on a row, as a click does.
  void click(const char* path) const
  {
    panel->geog_tree->set_cursor(Gtk::TreePath(path));
    settle();
  }
  void search(const Glib::ustring& words) const
  {
    panel->zone_search->set_text(words);
    settle();
  }

  SurveyPanel1* panel = nullptr;
};

} // namespace

TEST_F(ZoneTest, ShowsTheCollapsedTreeOfTheSubregion)
{
  open_panel();
  EXPECT_EQ("3: Washington\n", visible_rows());
  EXPECT_FALSE(panel->no_geog_matches->get_visible());
  choose_subregion("California");
  EXPECT_EQ("4: California\n", visible_rows());
  choose_subregion("Florida & Gulf");
  EXPECT_EQ("2: Florida\n", visible_rows());
}

TEST_F(ZoneTest, HasNamesAndLabelsInItsRows)
{
  open_panel();
  EXPECT_EQ(1U, panel->geog_tree->get_n_columns());
  EXPECT_EQ("Geographic Zone", panel->geog_tree->get_column(0)->get_title());
  const auto row = *panel->geog_store->children().begin();
  EXPECT_EQ(3, row.get_value(panel->geog_columns.col_id));
  EXPECT_EQ("Washington", row.get_value(panel->geog_columns.col_name));
  EXPECT_EQ("3: Washington", row.get_value(panel->geog_columns.col_label));
}

TEST_F(ZoneTest, ReportsARegionWithoutZones)
{
  application_dir.file("CAR-geog.csv", "geogid,name\n");
  open_panel("Florida & Gulf");
  EXPECT_EQ("", visible_rows());
  EXPECT_TRUE(panel->no_geog_matches->get_visible());
}

TEST_F(ZoneTest, ExpandsTheAncestorsOfEachMatch)
{
  open_panel();
  search("rosario");
  EXPECT_EQ("3: Washington\n  3102: San Juan Islands\n    31020003: Rosario Wall\n",
            visible_rows());
  search("  PASS ");
  EXPECT_EQ("3: Washington\n  3102: San Juan Islands\n    31020004: Deception Pass\n",
            visible_rows());
  search("islands");
  EXPECT_EQ("3: Washington\n  3102: San Juan Islands\n", visible_rows());
}

TEST_F(ZoneTest, CollapsesTheTreeWhenTheSearchIsCleared)
{
  open_panel();
  for (const char* empty : {"", "   "}) {
    search("rosario");
    search(empty);
    EXPECT_EQ("3: Washington\n", visible_rows());
  }
}

TEST_F(ZoneTest, ReportsThatNothingMatches)
{
  open_panel();
  search("atlantis");
  EXPECT_EQ("", visible_rows());
  EXPECT_TRUE(panel->no_geog_matches->get_visible());
  EXPECT_NE("", panel->no_geog_matches->get_text());
  search("washington");
  EXPECT_EQ("3: Washington\n", visible_rows());
  EXPECT_FALSE(panel->no_geog_matches->get_visible());
}

TEST_F(ZoneTest, SearchesNothingUntilALocationIsChosen)
{
  open_panel("");
  search("rosario");
  EXPECT_FALSE(panel->no_geog_matches->get_visible());
  EXPECT_EQ("", visible_rows());
}

TEST_F(ZoneTest, KeepsTheSearchAfterAChangeOfLocation)
{
  open_panel();
  search("cove");
  EXPECT_TRUE(panel->no_geog_matches->get_visible());
  choose_subregion("California");
  EXPECT_EQ("4: California\n  4010: San Diego\n    40100010: La Jolla Cove\n", visible_rows());
}

TEST_F(ZoneTest, FindsZonesByNameAsTheUserTypesIntoTheTree)
{
  open_panel();
  const int name_column = panel->geog_columns.col_name.index();
  EXPECT_EQ(name_column, panel->geog_tree->get_search_column());
  search("rosario");
  EXPECT_EQ(name_column, panel->geog_tree->get_search_column());
}

TEST_F(ZoneTest, NamesTheZoneOfTheCode)
{
  const struct {
    const char* code;
    const char* status;
    const char* name;
    const char* site;
    bool complete;
  } cases[] = {
      {"3", "Partial Zone: ", "Washington", "Partial Zone: Washington", false},
      {"3102", "Partial Zone: ", "Washington, San Juan Islands",
       "Partial Zone: Washington, San Juan Islands", false},
      {"31020003", "Zone Name: ", "Washington, San Juan Islands, Rosario Wall",
       "Washington, San Juan Islands, Rosario Wall", true},
      {" 31020003 ", "Zone Name: ", "Washington, San Juan Islands, Rosario Wall",
       "Washington, San Juan Islands, Rosario Wall", true},
      {"3102000", "Zone Unknown  ", "", "", false},
      {"99999999", "Zone Unknown  ", "", "", false},
      {"reef", "Zone Unknown  ", "", "", false},
      {"99999999999999999999", "Zone Unknown  ", "", "", false},
      {"3abcdefg", "Zone Name: ", "Washington, Washington, Washington",
       "Washington, Washington, Washington", true},
      {"40100010", "Zone Name: ", "California, San Diego, La Jolla Cove",
       "California, San Diego, La Jolla Cove", true}, // in the region, but not in the tree
  };
  open_panel();
  for (const auto& c : cases) {
    panel->zonecode->set_text(c.code);
    EXPECT_EQ(c.status, panel->zone_name_status->get_text()) << c.code;
    EXPECT_EQ(c.name, panel->zone_name->get_text()) << c.code;
    EXPECT_EQ(c.site, panel->site_text) << c.code;
    EXPECT_EQ(c.complete, panel->zone_complete) << c.code;
    const Glib::ustring site = c.site;
    EXPECT_EQ((site.empty() ? "" : site + " - ") + window->base_title, window->get_title());
  }
}

TEST_F(ZoneTest, NamesNothingWithoutACode)
{
  open_panel();
  panel->zonecode->set_text("31020003");
  for (const char* empty : {"", "  "}) {
    panel->zonecode->set_text(empty);
    EXPECT_EQ("", panel->zone_name_status->get_text());
    EXPECT_EQ("", panel->zone_name->get_text());
    EXPECT_EQ("", panel->site_text);
    EXPECT_EQ(window->base_title, window->get_title());
    EXPECT_TRUE(panel->zone_complete); // not changed since the last code
  }
}

TEST_F(ZoneTest, NamesNothingBeforeAPlaceIsChosen)
{
  open_panel("");
  panel->zonecode->set_text("31020003");
  EXPECT_EQ("", panel->zone_name_status->get_text());
  EXPECT_EQ("31020003", panel->get_zonecode());
}

TEST_F(ZoneTest, ShowsANameLiterally)
{
  application_dir.file("CAR-geog.csv", "geogid,name\n2,Keys & <Reefs>\n");
  open_panel("Florida & Gulf");
  panel->zonecode->set_text("2");
  EXPECT_EQ("Keys & <Reefs>", panel->zone_name->get_text());
}

TEST_F(ZoneTest, ExpandsOneLevelAtAClickAndCollapsesItAtTheNext)
{
  open_panel();
  click("0");
  EXPECT_EQ("3: Washington\n  3102: San Juan Islands\n", visible_rows());
  click("0:0");
  EXPECT_EQ("3: Washington\n"
            "  3102: San Juan Islands\n"
            "    31020003: Rosario Wall\n"
            "    31020004: Deception Pass\n",
            visible_rows());
  EXPECT_EQ("", panel->zonecode->get_text());
  click("0");
  EXPECT_EQ("3: Washington\n", visible_rows());
}

TEST_F(ZoneTest, TakesTheCodeOfAClickedZone)
{
  open_panel();
  search("a");
  const std::string output = output_of(30, [&] { click("0:0:0"); });
  EXPECT_NE(std::string::npos, output.find("geog clicked: id 31020003: Rosario Wall\n")) << output;
  EXPECT_EQ("31020003", panel->zonecode->get_text());
  EXPECT_EQ("Washington, San Juan Islands, Rosario Wall", panel->zone_name->get_text());
  EXPECT_EQ("", output_of(29, [&] { click("0:0:1"); }));
  EXPECT_EQ("31020004", panel->zonecode->get_text());
}

TEST_F(ZoneTest, DoesNotChangeTheCodeOfAnUploadedSurvey)
{
  open_panel();
  panel->zonecode->set_text("31020004");
  search("rosario");
  window->survey.is_uploaded = true;
  panel->disable_inputs();
  click("0:0:0");
  EXPECT_EQ("31020004", panel->zonecode->get_text());
  click("0");
  EXPECT_EQ("3: Washington\n", visible_rows()); // the user can still collapse levels
}

TEST_F(ZoneTest, DoesNotTreatARebuiltTreeAsAClick)
{
  open_panel();
  search("rosario");
  click("0:0:0");
  panel->zonecode->set_text("31020004");
  const std::string output = output_of(30, [&] {
    panel->rebuild_zone_tree();
    settle();
  });
  EXPECT_EQ(std::string::npos, output.find("geog clicked")) << output;
  EXPECT_EQ("31020004", panel->zonecode->get_text());
  EXPECT_EQ("3: Washington\n  3102: San Juan Islands\n    31020003: Rosario Wall\n",
            visible_rows());
}

TEST_F(ZoneTest, DoesNothingWithoutACursor)
{
  open_panel();
  EXPECT_EQ("", output_of(30, [&] { panel->on_geog_clicked(); }));
  EXPECT_EQ("", panel->zonecode->get_text());
}

TEST_F(ZoneTest, CollapsesALevelAboveTheChosenZone)
{
  open_panel();
  search("rosario");
  click("0:0:0");
  panel->geog_tree->collapse_row(Gtk::TreePath("0:0"));
  settle();
  EXPECT_EQ("3: Washington\n  3102: San Juan Islands\n", visible_rows());
  panel->geog_tree->collapse_row(Gtk::TreePath("0"));
  settle();
  EXPECT_EQ("3: Washington\n", visible_rows());
  EXPECT_EQ("31020003", panel->zonecode->get_text());

  click("0"); // the cursor is already there, but this is another click
  EXPECT_EQ("3: Washington\n  3102: San Juan Islands\n", visible_rows());
}

// --- without a mouse ---

namespace {

class ZoneKeysTest : public ZoneTest
{
public:
  // Types a text into the search field, which then has the focus.
  void search_by_keys(const char* text)
  {
    panel->zone_search->grab_focus();
    wait_until("the search has the keyboard", [this] { return panel->zone_search->has_focus(); });
    type_text(*window, text);
  }
  void press(unsigned int keyval) { press_key(*window, keyval); }
  std::string cursor() const { return cursor_path(*panel->geog_tree).to_string(); }
};

const char* const all_found = "3: Washington\n"
                              "  3102: San Juan Islands\n"
                              "    31020003: Rosario Wall\n"
                              "    31020004: Deception Pass\n";

} // namespace

TEST_F(ZoneKeysTest, ReturnAndDownGoToTheFirstZoneFound)
{
  open_panel();
  for (const guint key : {guint{GDK_KEY_Return}, guint{GDK_KEY_Down}}) {
    panel->zonecode->set_text("");
    search_by_keys("deception");
    press(key);
    EXPECT_TRUE(panel->geog_tree->is_focus());
    EXPECT_EQ("0:0:0", cursor());
    EXPECT_EQ("31020004", panel->zonecode->get_text());
    panel->zone_search->set_text("");
  }
}

TEST_F(ZoneKeysTest, ALevelThatIsFoundStaysExpanded)
{
  open_panel();
  search_by_keys("s");
  const std::string found = visible_rows();
  press(GDK_KEY_Return);
  EXPECT_EQ("0", cursor());
  EXPECT_EQ(found, visible_rows());
}

TEST_F(ZoneKeysTest, TabAndArrowsDoNotCollapseResults)
{
  open_panel();
  search_by_keys("a");
  ASSERT_EQ(all_found, visible_rows());
  for (int tabs = 0; tabs < 5 && !panel->geog_tree->is_focus(); ++tabs)
    press(GDK_KEY_Tab);
  ASSERT_TRUE(panel->geog_tree->is_focus());
  EXPECT_EQ(all_found, visible_rows());
  const guint keys[] = {GDK_KEY_Down, GDK_KEY_Down, GDK_KEY_Down, GDK_KEY_Up,
                        GDK_KEY_Up,   GDK_KEY_Up,   GDK_KEY_Down};
  for (const guint key : keys)
    press(key);
  EXPECT_EQ("0:0", cursor());
  EXPECT_EQ(all_found, visible_rows());
}

TEST_F(ZoneKeysTest, TheFocusStaysIfNothingIsFound)
{
  open_panel();
  search_by_keys("zzz");
  press(GDK_KEY_Return);
  press(GDK_KEY_Down);
  EXPECT_TRUE(panel->zone_search->is_focus());
}

TEST_F(ZoneKeysTest, EscapeAndAButtonClearTheSearch)
{
  open_panel();
  EXPECT_EQ("", panel->zone_search->get_icon_name(Gtk::ENTRY_ICON_SECONDARY));
  search_by_keys("wall");
  EXPECT_EQ("edit-clear-symbolic", panel->zone_search->get_icon_name(Gtk::ENTRY_ICON_SECONDARY));
  EXPECT_NE("", panel->zone_search->get_icon_tooltip_text(Gtk::ENTRY_ICON_SECONDARY));
  press(GDK_KEY_Escape);
  EXPECT_EQ("", panel->zone_search->get_text());
  EXPECT_TRUE(panel->zone_search->is_focus());
  EXPECT_EQ("", panel->zone_search->get_icon_name(Gtk::ENTRY_ICON_SECONDARY));

  type_text(*window, "wall");
  GdkEvent click{};
  g_signal_emit_by_name(panel->zone_search->gobj(), "icon-press", GTK_ENTRY_ICON_SECONDARY, &click);
  EXPECT_EQ("", panel->zone_search->get_text());
}
