#include "core/my-app.h"
#include "data/region-info.h"
#include "data/species-views.h"
#include "support/main-loop.h"
#include "support/output.h"
#include "ui/listed-panel.h"
#include "ui/species-window.h"
#include "ui/survey-window.h"

namespace {

const char* const view_headings = "viewid,speciesid,familyid\n";
const char* const definition_headings = "viewid,subregioncode,viewname,isdefault\n";

class ListedPanelTest : public SpeciesWindowTest
{
public:
  ListedPanel& panel() const { return *window->listed_panel; }
  Glib::ustring instructions() const { return panel().listed_instructions->get_label(); }
  int number_of_columns() const { return static_cast<int>(tree().get_n_columns()); }
  void switch_on(Gtk::ToggleButton& button) const
  {
    button.set_active(true);
    settle();
  }
  // Returns the text that a column's first cell shows for a row.
  Glib::ustring cell_text(int column, const char* path) const
  {
    auto* view_column = tree().get_column(column);
    view_column->cell_set_cell_data(window->listed_model, window->listed_model->get_iter(path),
                                    false, false);
    auto* cell = dynamic_cast<Gtk::CellRendererText*>(view_column->get_first_cell());
    return cell ? cell->property_text().get_value() : "no text cell";
  }
};

const char* const both_northwest_families =
    "Sculpins:*\n  10 Longfin Sculpin = None*\nGreenlings:*\n  11 Lingcod = None*\n";

} // namespace

TEST_F(ListedPanelTest, StartsEmptyWithBothNamesSelected)
{
  open_window();
  EXPECT_TRUE(panel().name_display_both->get_active());
  EXPECT_FALSE(panel().name_display_common->get_active());
  EXPECT_EQ(0, number_of_columns());
  EXPECT_EQ("", listed_rows());
  EXPECT_EQ(-1, panel().species_view->get_id());
  EXPECT_EQ(-1, panel().species_view->no_value);
}

TEST_F(ListedPanelTest, TracesEachSpeciesThatEntersAStore)
{
  open_northwest();
  const auto refill = [&] { panel().update_for_view(); };
  const std::string traced = output_of(25, refill);
  std::string added;
  for (std::size_t at = traced.find("Added "); at != std::string::npos;
       at = traced.find("Added ", at + 1))
    added += traced.substr(at, traced.find('\n', at) + 1 - at);
  EXPECT_EQ("Added 12 Kelp Greenling\nAdded 11 Lingcod\nAdded 10 Longfin Sculpin\n"
            "Added 10 Longfin Sculpin\nAdded 11 Lingcod\n",
            added);
  EXPECT_EQ(std::string::npos, output_of(24, refill).find("Added "));
}

TEST_F(ListedPanelTest, AsksForASurveyTypeIfNoneIsChosen)
{
  open_window();
  choose_subregion("Northwest");
  EXPECT_EQ("Please select a survey location and type on the Survey Info Part 1 tab.",
            instructions());
  EXPECT_EQ("", listed_rows());
  EXPECT_EQ("", unlisted_rows());
  EXPECT_EQ(0, number_of_columns());
  EXPECT_EQ(1, panel().species_view->get_id()) << "the box shows the default view already";
}

TEST_F(ListedPanelTest, ShowsTheDefaultViewOfTheSubregion)
{
  open_northwest();
  EXPECT_EQ(1, window->survey.species_view_id);
  EXPECT_EQ(both_northwest_families, listed_rows());
  EXPECT_EQ("Greenlings:*\n  12 Kelp Greenling = None\n  11 Lingcod = None*\n"
            "Sculpins:*\n  10 Longfin Sculpin = None*\n",
            unlisted_rows());
  EXPECT_EQ("ID|Common + Scientific Names|Number seen (click to change)", column_titles());
  EXPECT_EQ(GTK_TREE_MODEL(window->listed_model->gobj()),
            tree().get_model()->Gtk::TreeModel::gobj());
}

TEST_F(ListedPanelTest, ExplainsTheShadesOfTheRegion)
{
  open_northwest();
  EXPECT_NE(std::string::npos,
            instructions().raw().find("shaded in <span background=\"#9cf\">blue</span> are"));
  EXPECT_FALSE(panel().spanish_enable->get_visible());

  choose_subregion("Florida & Gulf");
  choose_survey_type("Florida: abundance");
  EXPECT_NE(std::string::npos, instructions().raw().find("NOT-GC: No se encuentra"));
  EXPECT_TRUE(panel().spanish_enable->get_visible());
  EXPECT_TRUE(panel().listed_instructions->get_use_markup());
}

TEST_F(ListedPanelTest, ClearsThePageForANewSubregion)
{
  open_northwest();
  choose_subregion("California");
  EXPECT_EQ("", listed_rows());
  EXPECT_EQ("", unlisted_rows());
  EXPECT_EQ(0, number_of_columns());
  EXPECT_EQ(3, panel().species_view->get_id());
}

TEST_F(ListedPanelTest, KeepsMarksAndExpandsTheirFamiliesWhenTheViewChanges)
{
  open_survey("Northwest", "Northwest: fish and invertebrates");
  mark(11, 2);
  tree().collapse_all();
  choose(*panel().species_view, "With invertebrates");
  EXPECT_EQ("Sculpins:*\n  10 Longfin Sculpin = None*\nGreenlings:*\n  11 Lingcod = Few (2-10)*\n"
            "Sea Stars:*\n  20 Ochre Star = None*\n  21 Mottled Star = None*\n",
            listed_rows());
  EXPECT_EQ("0 1 0", unfolded());
  EXPECT_EQ(2, window->survey.species_view_id);
  EXPECT_EQ(2, window->survey.abundances.at(11));

  tree().expand_all();
  choose(*panel().species_view, "Common");
  EXPECT_EQ("0 1", unfolded()) << "a rebuilt table expands only marked families";
}

TEST_F(ListedPanelTest, IncludesFishOutsideTheViewButNotInvertebrates)
{
  open_survey("Northwest", "Northwest: fish and invertebrates");
  EXPECT_EQ("Greenlings:*\n  12 Kelp Greenling = None\n  11 Lingcod = None*\n"
            "Sculpins:*\n  10 Longfin Sculpin = None*\n",
            unlisted_rows());
  choose(*panel().species_view, "With invertebrates");
  EXPECT_EQ("Greenlings:*\n  12 Kelp Greenling = None\n  11 Lingcod = None*\n"
            "Sculpins:*\n  10 Longfin Sculpin = None*\n"
            "Sea Stars:*\n  21 Mottled Star = None*\n  20 Ochre Star = None*\n",
            unlisted_rows());
}

TEST_F(ListedPanelTest, ShowsOnlyTheKindsThatTheSurveyTypeIncludes)
{
  application_dir.file(
      "region-info.csv",
      "regioncode,subregioncode,regionname,subregionname,surveytypeid,surveytypename,hasabundance,"
      "hasfish,hasinverts,canhaveinverts,visible\n"
      "PAC,PNW,Pacific,Northwest,1,Fish,1,1,0,1,1\n"
      "PAC,PNW,Pacific,Northwest,3,Invertebrates,1,0,1,1,1\n");
  application_dir.file("species-view-definitions.csv",
                       std::string(definition_headings) + "2,PNW,Everything,1\n");
  open_survey("Northwest", "Invertebrates");
  const char* const stars = "Sea Stars:*\n  20 Ochre Star = None*\n  21 Mottled Star = None*\n";
  EXPECT_EQ(stars, listed_rows());
  EXPECT_EQ("Sea Stars:*\n  21 Mottled Star = None*\n  20 Ochre Star = None*\n", unlisted_rows());

  choose_survey_type("Fish");
  EXPECT_EQ(both_northwest_families, listed_rows());
}

TEST_F(ListedPanelTest, GroupsSpeciesByTheFamiliesOfTheView)
{
  const struct {
    const char* why;
    const char* entries;
    const char* expected;
  } cases[] = {
      {"a family that occurs again gets a second row", "1,11,F2\n1,10,F1\n1,12,F2\n",
       "Greenlings:*\n  11 Lingcod = None*\nSculpins:*\n  10 Longfin Sculpin = None*\n"
       "Greenlings:*\n  12 Kelp Greenling = None*\n"},
      {"a family other than the one of the region", "1,11,F1\n",
       "Sculpins:*\n  11 Lingcod = None*\n"},
      {"a family that the region lacks, first", "1,11,F9\n1,12,F2\n",
       ":*\n  11 Lingcod = None*\nGreenlings:*\n  12 Kelp Greenling = None*\n"},
      {"a family that the region lacks, later", "1,12,F2\n1,11,F9\n",
       "Greenlings:*\n  12 Kelp Greenling = None*\n:*\n  11 Lingcod = None*\n"},
      {"a species that the region lacks", "1,99999,F1\n1,13,F1\n1,11,F2\n",
       "Greenlings:*\n  11 Lingcod = None*\n"},
      {"nothing", "2,11,F2\n", ""},
  };
  for (const auto& c : cases) {
    my_app = nullptr;
    application_dir.file("species-views.csv", std::string(view_headings) + c.entries);
    open_northwest();
    EXPECT_EQ(c.expected, listed_rows()) << c.why;
    window->hide();
  }
}

TEST_F(ListedPanelTest, MarksAFamilyAsInTheViewIfOneOfItsSpeciesIs)
{
  application_dir.file("species-views.csv", std::string(view_headings) + "1,11,F2\n");
  open_northwest();
  EXPECT_EQ("Greenlings:*\n  12 Kelp Greenling = None\n  11 Lingcod = None*\n"
            "Sculpins:\n  10 Longfin Sculpin = None\n",
            unlisted_rows());
}

TEST_F(ListedPanelTest, AcceptsAMissingDefaultView)
{
  const struct {
    const char* why;
    const char* definitions;
    int expected;
  } cases[] = {
      {"no default", "1,PNW,Common,0\n", -1},
      {"no views", "3,CAL,Common,1\n", -1},
      {"a view without species", "90,PNW,Common,1\n", 90},
  };
  for (const auto& c : cases) {
    my_app = nullptr;
    application_dir.file("species-view-definitions.csv",
                         std::string(definition_headings) + c.definitions);
    open_northwest();
    EXPECT_EQ(c.expected, window->survey.species_view_id) << c.why;
    EXPECT_EQ("", listed_rows()) << c.why;
    EXPECT_EQ("Greenlings:\n  12 Kelp Greenling = None\n  11 Lingcod = None\n"
              "Sculpins:\n  10 Longfin Sculpin = None\n",
              unlisted_rows())
        << c.why;
    window->hide();
  }
}

TEST_F(ListedPanelTest, ShowsTheNamesThatTheButtonsSelect)
{
  open_northwest();
  const struct {
    Gtk::RadioButton* button;
    const char* title;
    const char* name;
    bool common;
    bool scientific;
  } cases[] = {
      {panel().name_display_scientific, "Scientific Name", "Ophiodon elongatus", false, true},
      {panel().name_display_common, "Common Name", "Lingcod", true, false},
      {panel().name_display_both, "Common + Scientific Names", "Lingcod (Ophiodon elongatus)", true,
       true},
  };
  for (const auto& c : cases) {
    switch_on(*c.button);
    EXPECT_EQ(std::string("ID|") + c.title + "|Number seen (click to change)", column_titles());
    EXPECT_EQ(c.name, cell_text(1, "1:0"));
    EXPECT_EQ(c.common, window->survey.show_common_name) << c.title;
    EXPECT_EQ(c.scientific, window->survey.show_scientific_name) << c.title;
    EXPECT_FALSE(window->survey.show_spanish_name);
    EXPECT_EQ("0011:", cell_text(0, "1:0"));
    EXPECT_EQ("Family", cell_text(0, "1"));
    EXPECT_EQ("None", cell_text(2, "1:0"));
    EXPECT_EQ("", cell_text(2, "1"));
  }
}

TEST_F(ListedPanelTest, KeepsTheIdAndNameColumnsAndReplacesTheOthers)
{
  open_northwest();
  auto* const id_column = tree().get_column(0);
  auto* const name_column = tree().get_column(1);
  switch_on(*panel().name_display_common);
  EXPECT_EQ(id_column, tree().get_column(0));
  EXPECT_EQ(name_column, tree().get_column(1));
  EXPECT_EQ(&panel().species_parts.id_column, tree().get_column(0));
  EXPECT_EQ(&panel().species_parts.name_column, tree().get_column(1));
}

TEST_F(ListedPanelTest, AddsSpanishNamesWithTheirTagsAsPlainText)
{
  open_survey("Florida & Gulf", "Florida: abundance");
  switch_on(*panel().spanish_enable);
  EXPECT_EQ("ID|Common + Scientific Names|Spanish Name|Number seen (click to change)",
            column_titles());
  EXPECT_TRUE(window->survey.show_spanish_name);
  EXPECT_EQ("Cachama negra", cell_text(2, "0:0"));
  EXPECT_EQ("<span background=\"#9cf\">Pargo prieto</span>", cell_text(2, "1:0"));

  panel().spanish_enable->set_active(false);
  EXPECT_EQ("ID|Common + Scientific Names|Number seen (click to change)", column_titles());
}

TEST_F(ListedPanelTest, KeepsTheSpanishColumnInARegionThatHasNoSuchNames)
{
  open_survey("Florida & Gulf", "Florida: abundance");
  switch_on(*panel().spanish_enable);
  choose_subregion("Northwest");
  choose_survey_type("Northwest: abundance");
  EXPECT_FALSE(panel().spanish_enable->get_visible());
  EXPECT_TRUE(panel().spanish_enable->get_active());
  EXPECT_EQ("ID|Common + Scientific Names|Spanish Name|Number seen (click to change)",
            column_titles());
  EXPECT_EQ("", cell_text(2, "0:0"));
}

TEST_F(ListedPanelTest, OnlyTheNameButtonThatIsTurnedOnActs)
{
  open_northwest();
  const auto toggle = [&] { panel().name_display_common->set_active(true); };
  EXPECT_EQ("name display button toggled, state = 0\nname display button toggled, state = 1\n"
            "Updating columns\n",
            output_of(10, toggle));
  EXPECT_EQ("", output_of(9, [&] { panel().name_display_both->set_active(true); }));
}

TEST_F(ListedPanelTest, SetsASavedViewOnlyIfTheSubregionOffersIt)
{
  application_dir.file("species-view-definitions.csv", std::string(definition_headings) +
                                                           "1,PNW,Common,1\n2,PNW,More,0\n"
                                                           "3,CAL,Common,1\n6,PNW,Last,0\n");
  open_northwest();
  for (const int refused : {-1, -2147483647, 1, 0, 3, 5, 7, 2147483647}) {
    EXPECT_EQ("", output_of(1, [&] { panel().set_species_view_carefully(refused); })) << refused;
    EXPECT_EQ(1, panel().species_view->get_id()) << refused;
    EXPECT_EQ(1, window->survey.species_view_id) << refused;
  }
  for (const int accepted : {2, 6, 1}) {
    panel().set_species_view_carefully(accepted);
    EXPECT_EQ(accepted, panel().species_view->get_id());
    EXPECT_EQ(accepted, window->survey.species_view_id);
  }
}

TEST_F(ListedPanelTest, ClearsTheViewIfTheBoxLacksItsRow)
{
  open_northwest();
  panel().species_view->init({{1, "Common"}}, -1);
  panel().species_view->set_id(1);
  panel().set_species_view_carefully(2);
  EXPECT_EQ(-1, panel().species_view->get_id());
  EXPECT_EQ(-1, window->survey.species_view_id);
  EXPECT_EQ("", listed_rows());
}

TEST_F(ListedPanelTest, ExpandsTheFamiliesOfMarkedSpecies)
{
  open_northwest();
  mark(10, 0);
  mark(11, 1);
  panel().expand_selected_families();
  EXPECT_EQ("0 1", unfolded());
  panel().expand_selected_families();
  EXPECT_EQ("0 1", unfolded());
}

TEST_F(ListedPanelTest, CollapsesAndExpandsAllFamiliesByItsButtons)
{
  open_northwest();
  press(*panel().listed_expand_all_button);
  EXPECT_EQ("1 1", unfolded());
  press(*panel().listed_collapse_all_button);
  EXPECT_EQ("0 0", unfolded());
}

TEST_F(ListedPanelTest, ShowsMarksOfTheSurveyInARefilledTable)
{
  open_northwest();
  window->survey.abundances = {{10, 3}, {12, 40}, {77, 1}};
  panel().update_for_view();
  EXPECT_EQ("Sculpins:*\n  10 Longfin Sculpin = Many (11-100)*\n"
            "Greenlings:*\n  11 Lingcod = None*\n",
            listed_rows());
  EXPECT_EQ("Greenlings:*\n  12 Kelp Greenling = Many (11-100)\n  11 Lingcod = None*\n"
            "Sculpins:*\n  10 Longfin Sculpin = Many (11-100)*\n",
            unlisted_rows());
  EXPECT_EQ((std::map<int, int>{{10, 3}, {12, 40}, {77, 1}}), window->survey.abundances)
      << "building adds no entries";
}

TEST_F(ListedPanelTest, ShowsNamesThatAreNotMarkup)
{
  application_dir.file("PAC-species-info.csv",
                       "speciesid,scientificname,commonname,familyid,invertebratetype,rarefishind\n"
                       "10,Gobius <sp.>,Goby < 3 cm & co,F1,0,2\n");
  open_northwest();
  EXPECT_EQ("Goby < 3 cm & co (Gobius <sp.>)", cell_text(1, "0:0"));
}

TEST_F(ListedPanelTest, TracesItsSteps)
{
  open_northwest();
  EXPECT_EQ("Using view id 1; show_fish=1, show_inverts=0\n",
            output_of(1, [&] { panel().update_for_view(); }));
  const std::string at_three = output_of(3, [&] { panel().setup_for_subregion("PNW"); });
  EXPECT_NE(std::string::npos,
            at_three.find("subregion now PNW; active view id now 1; about to update for view\n"
                          "Using view id 1; show_fish=1, show_inverts=0\n"
                          "New family node: F2 = Greenlings (Hexagrammidae)\n"
                          "New family node: F1 = Sculpins (Cottidae)\n"
                          "0: 10 (Longfin Sculpin) F1\n1: 11 (Lingcod) F2\n"
                          "New family node: F1 = Sculpins (Cottidae)\n"
                          "New family node: F2 = Greenlings (Hexagrammidae)\n"))
      << at_three;
}

TEST_F(ListedPanelTest, ShadesTextLikeItsRows)
{
  EXPECT_EQ("<span background=\"#9cf\">blue</span>", ListedPanel::rarecolor("blue"));
  EXPECT_EQ("<span background=\"#c60\">brown</span>", ListedPanel::rarecolor2("brown"));
}
