#include "data/abundance-choices.h"
#include "data/region-info.h"
#include "support/dialogs.h"
#include "support/main-loop.h"
#include "support/output.h"
#include "support/window-fixture.h"
#include "ui/listed-panel.h"
#include "ui/survey-panel1.h"
#include "ui/survey-panel2.h"
#include "ui/survey-window.h"

#include <ctime>
#include <filesystem>

namespace {

class SurveyPanel1Test : public WindowTest
{
public:
  // Opens the window and chooses location and survey type unless they are empty.
  SurveyPanel1* open_panel(const Glib::ustring& place = "", const Glib::ustring& type = "")
  {
    panel = open_window()->survey_panel1;
    if (!place.empty())
      choose_subregion(place);
    if (!type.empty())
      choose_survey_type(type);
    return panel;
  }
  std::vector<Glib::ustring> labels(const DropDownBox& box) const
  {
    std::vector<Glib::ustring> texts;
    for (const auto& item : box.items)
      texts.push_back(item.second);
    return texts;
  }

  SurveyPanel1* panel = nullptr;
};

using Labels = std::vector<Glib::ustring>;

int current_year()
{
  const std::time_t now = std::time(nullptr);
  return 1900 + std::localtime(&now)->tm_year;
}

const char* const northwest_type = "Northwest: abundance";

} // namespace

// --- a new survey ---

TEST_F(SurveyPanel1Test, StartsWithOnlyLocationDateAndTimeSensitive)
{
  open_panel();
  for (auto* box : {panel->subregion, panel->month, panel->mday, panel->year, panel->dive_start}) {
    EXPECT_TRUE(box->get_sensitive());
    EXPECT_EQ("", box->get_label());
  }
  EXPECT_FALSE(panel->survey_subtype->get_sensitive());
  EXPECT_FALSE(panel->zonecode->get_sensitive());
  EXPECT_FALSE(panel->zone_search->get_sensitive());
  EXPECT_EQ("", panel->zone_name->get_text());
  EXPECT_EQ("", panel->zone_name_status->get_text());
  EXPECT_FALSE(panel->no_geog_matches->get_visible());
  EXPECT_FALSE(panel->triggers_suppressed);
  EXPECT_FALSE(panel->zone_complete);
  EXPECT_EQ(2, panel->page);
  EXPECT_EQ(nullptr, window->survey.survey_subtype);
}

TEST_F(SurveyPanel1Test, OffersSubregionsInTheOrderOfTheirCodes)
{
  open_panel();
  EXPECT_EQ((Labels{"California", "Florida & Gulf", "Northwest"}), labels(*panel->subregion));
}

TEST_F(SurveyPanel1Test, OffersMonthsDaysAndYearsThatAreZeroWhileNoneIsChosen)
{
  open_panel();
  EXPECT_EQ(12U, panel->month->items.size());
  EXPECT_EQ(std::make_pair(1, Glib::ustring("January")), panel->month->items.front());
  EXPECT_EQ(std::make_pair(12, Glib::ustring("December")), panel->month->items.back());
  EXPECT_EQ(31U, panel->mday->items.size());
  EXPECT_EQ(std::make_pair(1, Glib::ustring("1")), panel->mday->items.front());
  EXPECT_EQ(std::make_pair(31, Glib::ustring("31")), panel->mday->items.back());
  const int year = current_year();
  EXPECT_EQ(static_cast<std::size_t>(year - 1993 + 1), panel->year->items.size());
  EXPECT_EQ(std::make_pair(year, Glib::ustring(std::to_string(year))), panel->year->items.front());
  EXPECT_EQ(std::make_pair(1993, Glib::ustring("1993")), panel->year->items.back());
  for (const auto* box : {panel->month, panel->mday, panel->year})
    EXPECT_EQ(0, box->get_id());
}

TEST_F(SurveyPanel1Test, StartsTheListOfHoursAtTheSeventhEntry)
{
  open_panel();
  EXPECT_EQ((Labels{"9 AM", "10 AM", "Midnight", "1 AM", "2 AM", "3 AM", "4 AM", "5 AM"}),
            labels(*panel->dive_start));
  EXPECT_EQ(-1, panel->dive_start->get_id());
}

TEST_F(SurveyPanel1Test, ReturnsTheHourAsFourDigits)
{
  application_dir.file("data-definitions.csv", "group,value,label\n"
                                               "divestart,24,Midnight\ndivestart,9,9 AM\n"
                                               "divestart,23,11 PM\ndivestart,0,Zero\n"
                                               "divestart,2147483647,Damaged\n");
  open_panel();
  const struct {
    const char* label;
    const char* expected;
  } cases[] = {
      {"", "0000"},      {"Midnight", "0000"}, {"9 AM", "0900"},
      {"11 PM", "2300"}, {"Zero", "0000"},     {"Damaged", "214748364700"},
  };
  for (const auto& c : cases) {
    panel->dive_start->set_label(c.label);
    EXPECT_EQ(c.expected, panel->get_dive_start_string()) << c.label;
  }
}

TEST_F(SurveyPanel1Test, ShowsDateAndTimeInTheTitle)
{
  open_panel();
  const Glib::ustring program = window->base_title;
  panel->year->set_id(2021);
  panel->month->set_id(6);
  panel->mday->set_id(5);
  EXPECT_EQ("2021-06-05 - " + program, window->get_title());
  panel->dive_start->set_id(9);
  EXPECT_EQ("2021-06-05 9 AM - " + program, window->get_title());
}

// --- subregion ---

TEST_F(SurveyPanel1Test, AdaptsTheSurveyToTheChosenSubregion)
{
  open_panel("Northwest");
  const SurveyData& survey = window->survey;
  EXPECT_EQ("PAC", survey.region);
  EXPECT_EQ("PNW", survey.subregion);
  EXPECT_EQ(&my_app->region_info->region_fish["PAC"], survey.region_fish);
  EXPECT_EQ(&my_app->region_info->subregions["PNW"], survey.subregion_info);
  EXPECT_EQ(nullptr, survey.survey_subtype);
  EXPECT_EQ((Labels{"Northwest: abundance", "Northwest: species only",
                    "Northwest: fish and invertebrates"}),
            labels(*panel->survey_subtype));
  EXPECT_EQ(-1, panel->survey_subtype->get_id());
  EXPECT_TRUE(panel->survey_subtype->get_sensitive());
  EXPECT_TRUE(panel->zonecode->get_sensitive());
  EXPECT_TRUE(panel->zone_search->get_sensitive());
  EXPECT_TRUE(window->save_button->get_sensitive());
  EXPECT_EQ(2U, window->survey_panel2->habitat->items.size());
  EXPECT_EQ("Common", window->listed_panel->species_view->get_label());
}

TEST_F(SurveyPanel1Test, ChangesTheLocationAtOnceIfNothingIsMarked)
{
  open_panel("Northwest", northwest_type);
  SurveyData& survey = window->survey;
  survey.abundances[10] = 0; // not marked
  survey.filename = "saved";
  survey.file_etag = "tag";
  panel->zonecode->set_text("31020003");
  survey.show_spanish_name = true;

  expect_no_dialog([&] { choose_subregion("Florida & Gulf"); });
  EXPECT_EQ("FLA", survey.subregion);
  EXPECT_EQ("CAR", survey.region);
  EXPECT_TRUE(survey.abundances.empty());
  EXPECT_EQ("", survey.filename);
  EXPECT_EQ("tag", survey.file_etag);
  EXPECT_EQ(nullptr, survey.survey_subtype);
  EXPECT_FALSE(survey.show_fish);
  EXPECT_FALSE(survey.show_inverts);
  EXPECT_FALSE(survey.show_common_name);
  EXPECT_FALSE(survey.show_scientific_name);
  EXPECT_FALSE(survey.show_spanish_name);
  EXPECT_EQ("", panel->get_zonecode());
}

TEST_F(SurveyPanel1Test, KeepsTheZoneAfterAChangeOfLocationUntilTheCodeChanges)
{
  open_panel("Northwest");
  panel->zonecode->set_text("31020003");
  const Glib::ustring title = window->get_title();
  choose_subregion("Florida & Gulf");
  EXPECT_EQ("", panel->zonecode->get_text());
  EXPECT_EQ("Zone Name: ", panel->zone_name_status->get_text());
  EXPECT_EQ("Washington, San Juan Islands, Rosario Wall", panel->zone_name->get_text());
  EXPECT_EQ("Washington, San Juan Islands, Rosario Wall", panel->site_text);
  EXPECT_EQ(title, window->get_title());
  panel->zonecode->set_text("2");
  EXPECT_EQ("Florida", panel->zone_name->get_text());
}

TEST_F(SurveyPanel1Test, AsksBeforeMarkedSpeciesAreLost)
{
  open_panel("Northwest", northwest_type);
  window->survey.abundances = {{10, 2}, {11, 1}, {12, 0}};
  const SeenDialog seen =
      answer_next_dialog(Gtk::RESPONSE_ACCEPT, [&] { choose_subregion("Florida & Gulf"); });
  EXPECT_EQ("Clear selected species?", seen.title);
  EXPECT_EQ("2 species you have selected will be lost if you change the survey region!\n"
            "Do you want to change the survey region and start over selecting species?\n"
            "Click Yes to proceed and clear the selected species,\n"
            "or Cancel to leave the survey region as it was for now.",
            seen.text);
  EXPECT_EQ((Labels{"gtk-yes", "gtk-cancel"}), seen.buttons);
  EXPECT_EQ(Gtk::MESSAGE_WARNING, seen.message_type);
  EXPECT_TRUE(seen.has_icon);
  EXPECT_EQ("FLA", window->survey.subregion);
  EXPECT_TRUE(window->survey.abundances.empty());
  EXPECT_EQ("Florida & Gulf", panel->subregion->get_label());
}

TEST_F(SurveyPanel1Test, RestoresTheBoxUnlessTheAnswerIsYes)
{
  open_panel("Northwest", northwest_type);
  window->survey.abundances = {{10, 2}};
  window->survey.filename = "saved";
  panel->zonecode->set_text("31020003");
  for (const int answer : {Gtk::RESPONSE_CANCEL, Gtk::RESPONSE_DELETE_EVENT}) {
    answer_next_dialog(answer, [&] { panel->subregion->set_label("California"); });
    EXPECT_EQ("Northwest", panel->subregion->get_label());
    EXPECT_EQ("PNW", window->survey.subregion);
    EXPECT_EQ("saved", window->survey.filename);
    EXPECT_EQ((std::map<int, int>{{10, 2}}), window->survey.abundances);
    EXPECT_EQ(northwest_type, panel->survey_subtype->get_label());
    EXPECT_EQ("31020003", panel->get_zonecode());
  }
}

TEST_F(SurveyPanel1Test, AsksNothingIfTheSameLocationIsChosenAgain)
{
  open_panel("Northwest", northwest_type);
  window->survey.abundances = {{10, 2}};
  window->survey.filename = "saved";
  expect_no_dialog([&] { panel->on_subregion_changed(); });
  EXPECT_EQ("saved", window->survey.filename);
  EXPECT_EQ(northwest_type, panel->survey_subtype->get_label());
  EXPECT_EQ((std::map<int, int>{{10, 2}}), window->survey.abundances);
}

TEST_F(SurveyPanel1Test, ClearsTheBoxOnceIfTheCurrentLocationIsNotOffered)
{
  application_dir.file("region-info.csv",
                       "regioncode,subregioncode,regionname,subregionname,surveytypeid,"
                       "surveytypename,hasabundance,hasfish,hasinverts,canhaveinverts,visible\n"
                       "PAC,PNW,Pacific,Northwest,1,Old form,1,1,0,1,0\n"
                       "PAC,CAL,Pacific,California,5,Abundance,1,1,0,1,1\n");
  open_panel();
  panel->setup_for_subregion("PNW");
  EXPECT_EQ("", panel->subregion->get_label());
  window->survey.abundances = {{10, 1}};
  answer_next_dialog(Gtk::RESPONSE_CANCEL, [&] { panel->subregion->set_label("California"); });
  EXPECT_EQ("", panel->subregion->get_label());
  EXPECT_EQ("PNW", window->survey.subregion);
  EXPECT_EQ((std::map<int, int>{{10, 1}}), window->survey.abundances);
}

TEST_F(SurveyPanel1Test, SetsItsBoxWhenASurveyIsOpened)
{
  open_panel();
  panel->setup_for_subregion("CAL");
  EXPECT_EQ("California", panel->subregion->get_label());
  EXPECT_EQ("CAL", window->survey.subregion);
}

TEST_F(SurveyPanel1Test, KeepsTheSurveyWhenTheCurrentSubregionIsSetUpAgain)
{
  open_panel("Northwest", northwest_type);
  window->survey.abundances = {{10, 2}};
  window->survey.filename = "saved";
  panel->zonecode->set_text("31020003");
  panel->setup_for_subregion("PNW");
  EXPECT_EQ((std::map<int, int>{{10, 2}}), window->survey.abundances);
  EXPECT_EQ("saved", window->survey.filename);
  EXPECT_EQ("31020003", panel->get_zonecode());
  EXPECT_EQ(-1, panel->survey_subtype->get_id()); // the list has been filled again
  EXPECT_EQ(nullptr, window->survey.survey_subtype);
}

TEST_F(SurveyPanel1Test, AcceptsASubregionThatTheDataLack)
{
  open_panel("Northwest", northwest_type);
  const std::string output = output_of(-1, [&] { panel->setup_for_subregion("ATLANTIS"); });
  EXPECT_NE(std::string::npos, output.find("Subregion ATLANTIS is not in the data\n")) << output;
  EXPECT_EQ("ATLANTIS", window->survey.subregion);
  EXPECT_EQ("", window->survey.region);
  ASSERT_NE(nullptr, window->survey.region_fish);
  EXPECT_FALSE(window->survey.region_fish->initialised);
  EXPECT_EQ("", panel->subregion->get_label());
  EXPECT_TRUE(panel->survey_subtype->items.empty());
  EXPECT_TRUE(panel->geog_store->children().empty());
  EXPECT_TRUE(panel->no_geog_matches->get_visible());
  panel->set_survey_subtype_even_invisible("ATLANTIS", 1);
  EXPECT_EQ(-1, panel->survey_subtype->get_id());
  settle();

  choose_subregion("Northwest");
  choose_survey_type(northwest_type);
  EXPECT_EQ("PNW", window->survey.subregion);
}

TEST_F(SurveyPanel1Test, DoesNotReportMissingDataBelowLevelMinusOne)
{
  application_dir.file("abundance-choices.csv", "responseid,survey_subtype_id,label,abun\n");
  open_panel("Northwest");
  EXPECT_EQ("", output_of(-2, [&] {
              choose_survey_type("Northwest: abundance");
              panel->survey_subtype->add_item(6000, "Beyond");
              panel->survey_subtype->set_id(6000);
              my_app->region_info->subregion_codes.erase("California");
              panel->subregion->set_label("California");
              panel->setup_for_subregion("ATLANTIS");
            }));
}

TEST_F(SurveyPanel1Test, RestoresTheBoxIfNewDataLackTheChosenLocation)
{
  open_panel("Northwest");
  my_app->region_info->subregion_codes.erase("California");
  const std::string output = output_of(-1, [&] { panel->subregion->set_label("California"); });
  EXPECT_NE(std::string::npos, output.find("Subregion \"California\" is not in the data\n"));
  EXPECT_EQ("Northwest", panel->subregion->get_label());
  EXPECT_EQ("PNW", window->survey.subregion);
}

// --- suppressed handlers ---

TEST_F(SurveyPanel1Test, TracesSuppressedHandlers)
{
  open_panel("Northwest", northwest_type);
  panel->triggers_suppressed = true;
  const auto act = [&] {
    panel->subregion->set_label("California");
    panel->survey_subtype->set_label("Northwest: species only");
    panel->zonecode->set_text("31020003");
    panel->setup_for_subregion("FLA");
  };
  EXPECT_EQ("suppressed: on_subregion_changed\n"
            "suppressed: on_survey_subtype_changed\n"
            "suppressed: on_zonecode_changed\n"
            "suppressed: setup_for_subregion\n",
            output_of(1, act));
  EXPECT_EQ("PNW", window->survey.subregion);
  EXPECT_EQ(1, window->survey.survey_subtype->surveytypeid);
  EXPECT_EQ("", panel->zone_name->get_text());
  EXPECT_EQ("", output_of(0, [&] { panel->on_zonecode_changed(); }));
}

TEST_F(SurveyPanel1Test, TracesTheSetUpOfASubregion)
{
  open_panel("Northwest", northwest_type);
  panel->zonecode->set_text("31020003");
  const std::string output = output_of(1, [&] { choose_subregion("California"); });
  const char* const lines[] = {
      "*** Triggers suppressed by setup_for_subregion\n",
      "suppressed: on_zonecode_changed\n",
      "*** Triggers released by setup_for_subregion\nsurvey subtype cleared\n",
  };
  std::size_t from = 0;
  for (const char* line : lines) {
    from = output.find(line, from);
    ASSERT_NE(std::string::npos, from) << line << "in\n" << output;
  }
  EXPECT_FALSE(panel->triggers_suppressed);
  EXPECT_EQ("", output_of(0, [&] { choose_subregion("Northwest"); }));
}

// --- survey type ---

TEST_F(SurveyPanel1Test, AppliesTheSurveyType)
{
  open_panel("Northwest");
  const std::string output =
      output_of(1, [&] { choose_survey_type("Northwest: fish and invertebrates"); });
  EXPECT_NE(std::string::npos,
            output.find("survey subtype changed to 3\n"
                        "survey subtype set to Northwest: fish and invertebrates\n"))
      << output;
  const SurveyData& survey = window->survey;
  EXPECT_EQ(&my_app->region_info->regions[3], survey.survey_subtype);
  EXPECT_EQ(&my_app->abundance_choices->subtypes[3], survey.abundance_choices);
  EXPECT_EQ(&my_app->abundance_choices->subtypes[3].choices, window->species_columns.choices);
  EXPECT_TRUE(survey.show_fish);
  EXPECT_TRUE(survey.show_inverts);
  EXPECT_EQ(window->abundance_menus[3], window->current_abundance_menu);
  EXPECT_NE(nullptr, window->current_abundance_menu);
  EXPECT_FALSE(window->listed_model->children().empty());

  choose_survey_type("Northwest: species only");
  EXPECT_FALSE(survey.show_inverts);
  EXPECT_EQ(window->abundance_menus[2], window->current_abundance_menu);
}

TEST_F(SurveyPanel1Test, ChangesNothingElseWhenTheSurveyTypeIsCleared)
{
  open_panel("Northwest", northwest_type);
  const auto* choices = window->survey.abundance_choices;
  EXPECT_EQ("survey subtype cleared\n",
            output_of(1, [&] { panel->survey_subtype->unset_active(); }));
  EXPECT_EQ(nullptr, window->survey.survey_subtype);
  EXPECT_TRUE(window->survey.show_fish);
  EXPECT_EQ(choices, window->survey.abundance_choices);
  EXPECT_EQ(window->abundance_menus[1], window->current_abundance_menu);
}

TEST_F(SurveyPanel1Test, AcceptsASurveyTypeWithoutAbundanceChoices)
{
  application_dir.file("abundance-choices.csv", "responseid,survey_subtype_id,label,abun\n"
                                                "201,2,Seen,1\n");
  open_panel("Northwest");
  for (const char* type : {"Northwest: abundance", "Northwest: fish and invertebrates"}) {
    const std::string output = output_of(-1, [&] { choose_survey_type(type); });
    EXPECT_NE(std::string::npos, output.find(" has no abundance choices\n")) << output;
    EXPECT_EQ(nullptr, window->current_abundance_menu);
    EXPECT_TRUE(!window->survey.abundance_choices ||
                window->survey.abundance_choices->choices.empty());
  }
  EXPECT_EQ("", output_of(0, [&] { choose_survey_type("Northwest: species only"); }));
  EXPECT_NE(nullptr, window->current_abundance_menu);
}

TEST_F(SurveyPanel1Test, AcceptsASurveyTypeBeyondTheTables)
{
  open_panel("Northwest", northwest_type);
  for (const int id : {6000, -7}) {
    panel->survey_subtype->add_item(id, "Beyond");
    const std::string output = output_of(-1, [&] { panel->survey_subtype->set_id(id); });
    EXPECT_EQ("Survey type " + std::to_string(id) + " is not in the data\n", output);
    EXPECT_EQ(nullptr, window->survey.survey_subtype);
    panel->survey_subtype->set_id(1);
  }
}

TEST_F(SurveyPanel1Test, ReportsATypeWithAnotherNumberAndContinues)
{
  open_panel("Northwest");
  my_app->region_info->regions[1].surveytypeid = 42;
  EXPECT_EQ("Uh oh, survey_subtype_id confusion: 42 vs. 1\n",
            output_of(0, [&] { choose_survey_type(northwest_type); }));
  EXPECT_EQ(&my_app->region_info->regions[1], window->survey.survey_subtype);
}

TEST_F(SurveyPanel1Test, ShowsATypeOfASavedSurveyThatIsNoLongerOffered)
{
  open_panel("Northwest");
  const std::string output =
      output_of(1, [&] { panel->set_survey_subtype_even_invisible("PNW", 4); });
  EXPECT_EQ(0U, output.find("Hey, invisible subtype 4 Northwest: old form\n")) << output;
  EXPECT_EQ("Northwest: old form - No longer available", panel->survey_subtype->get_label());
  EXPECT_EQ(4, panel->survey_subtype->get_id());
  EXPECT_EQ(4, panel->survey_subtype->items.back().first);
  EXPECT_EQ(4, window->survey.survey_subtype->surveytypeid);

  panel->setup_for_subregion("PNW");
  EXPECT_EQ(3U, panel->survey_subtype->items.size());
}

TEST_F(SurveyPanel1Test, ShowsATypeThatIsOffered)
{
  open_panel("Northwest");
  panel->set_survey_subtype_even_invisible("PNW", 2);
  EXPECT_EQ("Northwest: species only", panel->survey_subtype->get_label());
  EXPECT_EQ(3U, panel->survey_subtype->items.size());
}

TEST_F(SurveyPanel1Test, ShowsNoTypeThatTheSubregionNeverHad)
{
  open_panel("Northwest", northwest_type);
  for (const int id : {5, 77, -1}) {
    panel->set_survey_subtype_even_invisible("PNW", id);
    EXPECT_EQ(-1, panel->survey_subtype->get_id()) << id;
    EXPECT_EQ(nullptr, window->survey.survey_subtype) << id;
  }
}

TEST_F(SurveyPanel1Test, EndsTheProgramForASavedTypeWithoutASubregion)
{
  // The child process starts over, since a display cannot be shared.
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  open_panel();
  const auto load = [&] {
    std::filesystem::remove_all(application_dir.root); // the child exits without cleaning up
    answer_next_dialog(Gtk::RESPONSE_CLOSE,
                       [&] { panel->set_survey_subtype_even_invisible("", 1); });
  };
  EXPECT_EXIT(load(), testing::ExitedWithCode(1),
              "FATAL ERROR: Can't load survey - empty subregion!");
}

// --- an uploaded survey ---

TEST_F(SurveyPanel1Test, ShowsTheZonesOfAnUploadedSurvey)
{
  open_panel("Northwest");
  panel->disable_inputs();
  const std::vector<Gtk::Widget*> locked = {
      panel->subregion, panel->survey_subtype, panel->month,    panel->mday,
      panel->year,      panel->dive_start,     panel->zonecode, panel->zone_name_status,
      panel->zone_name, panel->no_geog_matches};
  for (const auto* widget : locked)
    EXPECT_FALSE(widget->get_sensitive()) << widget->Gtk::Buildable::get_name();
  EXPECT_TRUE(panel->zone_search->get_sensitive());
  EXPECT_TRUE(panel->geog_tree->get_sensitive());
}
