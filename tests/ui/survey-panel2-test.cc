#include "core/my-app.h"
#include "support/main-loop.h"
#include "support/output.h"
#include "support/window-fixture.h"
#include "ui/confirm-panel.h"
#include "ui/survey-panel1.h"
#include "ui/survey-panel2.h"
#include "ui/survey-window.h"

namespace {

class SurveyPanel2Test : public WindowTest
{
public:
  SurveyPanel2* open_panel(const Glib::ustring& place = "", const Glib::ustring& type = "")
  {
    panel = open_window()->survey_panel2;
    if (!place.empty())
      choose_subregion(place);
    if (!type.empty())
      choose_survey_type(type);
    return panel;
  }
  void expect_depths(const char* avg, const char* max, bool max_is_sensitive) const
  {
    EXPECT_EQ(avg, panel->avg_depth->get_label());
    EXPECT_EQ(max, panel->max_depth->get_label());
    EXPECT_TRUE(panel->avg_depth->get_sensitive());
    EXPECT_EQ(max_is_sensitive, panel->max_depth->get_sensitive());
  }

  SurveyPanel2* panel = nullptr;
};

std::size_t rows(const DropDownBox* box)
{
  return box->items.size();
}

} // namespace

// --- a new survey ---

TEST_F(SurveyPanel2Test, StartsInFahrenheitWithNothingElseChosen)
{
  open_panel();
  EXPECT_EQ("Fahrenheit", panel->temp_units->get_label());
  EXPECT_EQ(0, panel->temp_units->get_id());
  for (const auto* box :
       {panel->visibility, panel->avg_depth, panel->max_depth, panel->current, panel->habitat})
    EXPECT_EQ(-1, box->get_id());
  EXPECT_EQ(2U, rows(panel->visibility));
  EXPECT_EQ(3U, rows(panel->avg_depth));
  EXPECT_EQ(3U, rows(panel->max_depth));
  EXPECT_EQ(2U, rows(panel->current));
  EXPECT_EQ(0U, rows(panel->habitat));
  EXPECT_EQ("Please select a survey location on the Survey Info Part 1 tab.",
            panel->habitat_descr->get_text());
  EXPECT_TRUE(panel->max_depth->get_sensitive());
  EXPECT_EQ(3, panel->page);
}

TEST_F(SurveyPanel2Test, OffersNothingIfADefinitionIsMissing)
{
  application_dir.file("data-definitions.csv", "group,value,label\ncurrent,1,None\n");
  open_panel();
  EXPECT_EQ(0U, rows(panel->visibility));
  EXPECT_EQ(0U, rows(panel->avg_depth));
  EXPECT_EQ(0U, rows(panel->max_depth));
  EXPECT_EQ(1U, rows(panel->current));
}

TEST_F(SurveyPanel2Test, ChoosesTheFirstHabitatThatTheDefinitionFileOffers)
{
  open_panel();
  EXPECT_EQ(-1, panel->habitat->get_active_row_number());

  application_dir.use_own_resources("none");
  std::string definition = read_file("resources/survey-ui.glade");
  const std::string habitat = "<object class=\"GtkComboBoxText\" id=\"habitat\">";
  ASSERT_NE(std::string::npos, definition.find(habitat));
  definition.insert(definition.find(habitat) + habitat.size(),
                    "<items><item>(please choose)</item><item>Kelp</item></items>");
  write_file("resources/survey-ui.glade", definition);
  open_panel();
  EXPECT_EQ(0, panel->habitat->get_active_row_number());
}

// --- temperature units ---

TEST_F(SurveyPanel2Test, TreatsOnlyAnExactCAsCelsius)
{
  const struct {
    const char* units;
    const char* label;
    const char* short_units;
  } cases[] = {
      {"C", "Celsius", "C"},    {"F", "Fahrenheit", "F"}, {"C", "Celsius", "C"},
      {"K", "Fahrenheit", "F"}, {"c", "Fahrenheit", "F"}, {"C ", "Fahrenheit", "F"},
      {"", "Fahrenheit", "F"},
  };
  open_panel();
  for (const auto& c : cases) {
    panel->set_temp_units_short(c.units);
    EXPECT_EQ(c.label, panel->temp_units->get_label()) << c.units;
    EXPECT_EQ(c.short_units, panel->get_temp_units_short()) << c.units;
  }
  panel->temp_units->unset_active();
  EXPECT_EQ("", panel->get_temp_units_short());
}

// --- survey type ---

TEST_F(SurveyPanel2Test, ExplainsWhatTheSurveyTypeRequires)
{
  open_panel("Northwest", "Northwest: species only");
  EXPECT_EQ("Please enter information about your survey conditions; since this is a species-only "
            "survey, all fields are optional except bottom time:",
            panel->sp2_instructions->get_text());
  EXPECT_FALSE(panel->optional1->get_visible());
  EXPECT_FALSE(panel->optional2->get_visible());

  choose_survey_type("Northwest: abundance");
  EXPECT_EQ("Please enter information about your survey conditions:",
            panel->sp2_instructions->get_text());
  EXPECT_TRUE(panel->optional1->get_visible());
  EXPECT_TRUE(panel->optional2->get_visible());
  EXPECT_EQ(RET_SUCCESS, panel->setup_for_survey_subtype());
}

// --- habitats ---

TEST_F(SurveyPanel2Test, OffersTheHabitatsOfTheRegionWithItsCodes)
{
  open_panel("Northwest");
  ASSERT_EQ(2U, rows(panel->habitat));
  EXPECT_EQ(std::make_pair(1, Glib::ustring("Kelp")), panel->habitat->items[0]);
  EXPECT_EQ(std::make_pair(3, Glib::ustring("Wall")), panel->habitat->items[1]);
  EXPECT_EQ(-1, panel->habitat->get_id());
}

TEST_F(SurveyPanel2Test, ClearsOnlyTheHabitatWhenTheRegionChanges)
{
  open_panel("Northwest");
  panel->habitat->set_id(3);
  panel->current->set_id(2);
  panel->surface_temp->set_text("50");
  choose_subregion("Florida & Gulf");
  EXPECT_EQ(-1, panel->habitat->get_id());
  EXPECT_EQ(1U, rows(panel->habitat));
  EXPECT_EQ(2, panel->current->get_id());
  EXPECT_EQ("50", panel->surface_temp->get_text());
  EXPECT_EQ("Reef Coral.", panel->habitat_descr->get_text());
}

TEST_F(SurveyPanel2Test, ChangesNothingWithoutARegion)
{
  open_panel();
  EXPECT_EQ(RET_INTERNAL_ERROR, panel->setup_for_subregion("PNW"));
  EXPECT_EQ("Please select a survey location on the Survey Info Part 1 tab.",
            panel->habitat_descr->get_text());
}

TEST_F(SurveyPanel2Test, DescribesTheHabitatsOfTheRegion)
{
  const struct {
    const char* why;
    const char* habitats;
    const char* region_habitats;
    const char* label; // markup
    const char* text;  // as shown
  } cases[] = {
      {"plain words, with a gap between the codes", "1,Kelp,Forest.\n2,Wall,Rock.\n",
       "PAC,1,1\nPAC,3,2\n", "<b>Kelp</b> Forest.\n<b>Wall</b> Rock.", "Kelp Forest.\nWall Rock."},
      {"markup in the data", "1,Kelp,<i>Forest</i> &amp; meadow.\n", "PAC,1,1\n",
       "<b>Kelp</b> <i>Forest</i> &amp; meadow.", "Kelp Forest & meadow."},
      {"a tag across name and description", "1,a</b> and <b>c,rest\n", "PAC,1,1\n",
       "<b>a</b> and <b>c</b> rest", "a and c rest"},
      {"a stray ampersand", "1,Kelp,Forest.\n2,Wall,Rock & ledges.\n", "PAC,1,1\nPAC,2,2\n",
       "<b>Kelp</b> Forest.\n<b>Wall</b> Rock &amp; ledges.", "Kelp Forest.\nWall Rock & ledges."},
      {"a stray ampersand in a name", "1,Kelp & sand,<i>Forest</i>.\n", "PAC,1,1\n",
       "<b>Kelp &amp; sand</b> <i>Forest</i>.", "Kelp & sand Forest."},
      {"a broken tag", "1,Kelp,Forest <5 m.\n2,Wall,Rock.\n", "PAC,1,1\nPAC,2,2\n",
       "<b>Kelp</b> Forest &lt;5 m.\n<b>Wall</b> Rock.", "Kelp Forest <5 m.\nWall Rock."},
      {"no habitats", "1,Kelp,Forest.\n", "CAR,1,1\n", "", ""},
      {"habitats of negative ids only", "1,Kelp,Forest.\n", "PAC,1,-1\nPAC,2,-7\n", "", ""},
      {"an id that no file defines", "1,Kelp,Forest.\n", "PAC,1,1\nPAC,2,77\n",
       "<b>Kelp</b> Forest.", "Kelp Forest."},
  };
  for (const auto& c : cases) {
    application_dir.file("habitat.csv",
                         std::string("habitatid,habitatname,habitatdescr\n") + c.habitats);
    application_dir.file("habitatregion.csv",
                         std::string("regioncode,habitat,habitatid\n") + c.region_habitats);
    my_app = nullptr; // the next window reads the data again
    open_panel("Northwest");
    EXPECT_EQ(c.label, panel->habitat_descr->get_label()) << c.why;
    EXPECT_EQ(c.text, panel->habitat_descr->get_text()) << c.why;
    EXPECT_TRUE(panel->habitat_descr->get_use_markup()) << c.why;
  }
}

// --- bottom time ---

TEST_F(SurveyPanel2Test, RequiresTheConfirmationOfAnEditedBottomTime)
{
  open_panel();
  auto* confirmed = window->confirm_panel->confirm_bottom_time;
  for (const char* text : {"200", "20", ""}) {
    confirmed->set_active(true);
    panel->bottom_time->set_text(text);
    EXPECT_FALSE(confirmed->get_active()) << text;
  }
  panel->bottom_time->set_text("20");
  confirmed->set_active(true);
  panel->bottom_time->delete_text(1, 2); // the user types the same digit again
  int position = 1;
  panel->bottom_time->insert_text("0", 1, position);
  EXPECT_EQ("20", panel->bottom_time->get_text());
  EXPECT_FALSE(confirmed->get_active());
}

// --- the link between the depths ---

TEST_F(SurveyPanel2Test, SetsTheMaximumWhenTheAverageBecomesSnorkel)
{
  open_panel();
  panel->max_depth->set_label("Deep");
  panel->avg_depth->set_label("Snorkel");
  expect_depths("Snorkel", "Snorkel", false);
}

TEST_F(SurveyPanel2Test, SetsTheAverageWhenTheMaximumBecomesSnorkel)
{
  open_panel();
  panel->avg_depth->set_label("Shallow");
  panel->max_depth->set_label("Snorkel");
  expect_depths("Snorkel", "Snorkel", false);
}

TEST_F(SurveyPanel2Test, ClearsAndUnlocksTheMaximumWhenTheAverageLeavesSnorkel)
{
  for (const bool by_average : {true, false}) {
    open_panel();
    (by_average ? panel->avg_depth : panel->max_depth)->set_label("Snorkel");
    panel->avg_depth->set_label("Shallow");
    expect_depths("Shallow", "", true);
    EXPECT_EQ(-1, panel->max_depth->get_id());
    panel->max_depth->set_label("Deep");
    panel->avg_depth->set_label("Deep");
    expect_depths("Deep", "Deep", true);
  }
}

TEST_F(SurveyPanel2Test, ClearsAndUnlocksTheMaximumWhenTheAverageIsCleared)
{
  open_panel();
  panel->avg_depth->set_label("Snorkel");
  panel->avg_depth->unset_active();
  expect_depths("", "", true);
}

TEST_F(SurveyPanel2Test, ChoosesTheEmptyRowOfAListThatHasOne)
{
  application_dir.file("data-definitions.csv", "group,value,label\n"
                                               "depth,9,\ndepth,1,Snorkel\ndepth,2,Shallow\n");
  open_panel();
  panel->avg_depth->set_label("Snorkel");
  panel->avg_depth->set_label("Shallow");
  expect_depths("Shallow", "", true);
  EXPECT_EQ(9, panel->max_depth->get_id());
}

TEST_F(SurveyPanel2Test, DoesNotChangeUnlinkedDepths)
{
  open_panel();
  panel->max_depth->set_label("Deep");
  panel->avg_depth->set_label("Shallow");
  expect_depths("Shallow", "Deep", true);
  panel->avg_depth->unset_active();
  expect_depths("", "Deep", true);
}

TEST_F(SurveyPanel2Test, DoesNotChangeAnUnlockedMaximumThatIsSnorkel)
{
  open_panel();
  panel->max_depth->set_label("Snorkel");
  panel->max_depth->set_sensitive(true);
  panel->max_depth->set_label("Deep"); // an unlocked box is not linked
  expect_depths("Snorkel", "Deep", true);

  // The average does not lock a maximum with the same value.
  panel->avg_depth->set_label("Shallow");
  panel->max_depth->set_label("Snorkel");
  panel->max_depth->set_sensitive(true);
  panel->on_avg_depth_changed();
  expect_depths("Snorkel", "Snorkel", true);
}

TEST_F(SurveyPanel2Test, NeverLinksTheDepthsOfAListWithoutSnorkel)
{
  application_dir.file("data-definitions.csv", "group,value,label\n"
                                               "depth,1,snorkel\ndepth,2,Snorkel \ndepth,3,Deep\n");
  open_panel();
  for (const auto& item : panel->avg_depth->items) {
    panel->avg_depth->set_id(item.first);
    EXPECT_EQ(-1, panel->max_depth->get_id());
    EXPECT_TRUE(panel->max_depth->get_sensitive());
  }
  panel->max_depth->set_id(1);
  EXPECT_EQ(3, panel->avg_depth->get_id());
}

TEST_F(SurveyPanel2Test, TracesTheLinkAtLevelTwo)
{
  open_panel();
  EXPECT_EQ("avg_depth: Snorkel\n"
            "\tmax_depth: ; setting to Snorkel\n"
            "max_depth: Snorkel\n",
            output_of(2, [&] { panel->avg_depth->set_label("Snorkel"); }));
  EXPECT_EQ("avg_depth: Deep\nmax_depth: \n",
            output_of(2, [&] { panel->avg_depth->set_label("Deep"); }));
  EXPECT_EQ("max_depth: Snorkel\n"
            "\tavg_depth: Deep; setting to Snorkel\n"
            "avg_depth: Snorkel\n",
            output_of(2, [&] { panel->max_depth->set_label("Snorkel"); }));
  EXPECT_EQ("", output_of(1, [&] { panel->avg_depth->set_label("Deep"); }));
}

// --- an uploaded survey ---

TEST_F(SurveyPanel2Test, CanOnlyBeReadInAnUploadedSurvey)
{
  open_panel("Northwest");
  panel->disable_inputs();
  const std::vector<Gtk::Widget*> locked = {
      panel->surface_temp, panel->optional1,       panel->bottom_temp, panel->optional2,
      panel->temp_units,   panel->bottom_time,     panel->visibility,  panel->label_avg_depth,
      panel->avg_depth,    panel->label_max_depth, panel->max_depth,   panel->current,
      panel->habitat};
  for (const auto* widget : locked)
    EXPECT_FALSE(widget->get_sensitive()) << widget->Gtk::Buildable::get_name();
  EXPECT_TRUE(panel->sp2_instructions->get_sensitive());
  EXPECT_TRUE(panel->habitat_descr->get_sensitive());
}
