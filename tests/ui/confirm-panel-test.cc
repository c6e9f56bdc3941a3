#include "core/my-app.h"
#include "support/keys.h"
#include "support/main-loop.h"
#include "support/output.h"
#include "support/window-fixture.h"
#include "ui/confirm-panel.h"
#include "ui/listed-panel.h"
#include "ui/member-panel.h"
#include "ui/survey-panel1.h"
#include "ui/survey-panel2.h"
#include "ui/survey-window.h"

#include <algorithm>

namespace {

const char* const please_check = "Please check that all information is correct.";
const char* const please_fix =
    "Please check that all information is correct; items marked in red need to be fixed.";

class ConfirmPanelTest : public WindowTest
{
public:
  // Opens a complete survey on the Confirmation page.
  void open_complete_survey(const Glib::ustring& type = "Northwest: fish and invertebrates")
  {
    open_window();
    panel = window->confirm_panel;
    window->member_panel->member_id->set_text("1234");
    window->member_panel->last_name->set_text("Miller");
    choose_subregion("Northwest");
    choose_survey_type(type);
    auto& where_and_when = *window->survey_panel1;
    where_and_when.year->set_label("2021");
    where_and_when.month->set_label("June");
    where_and_when.mday->set_label("30");
    where_and_when.dive_start->set_label("9 AM");
    where_and_when.zonecode->set_text("31020003");
    auto& conditions = *window->survey_panel2;
    conditions.bottom_time->set_text("45");
    conditions.visibility->set_label("Good");
    conditions.avg_depth->set_label("Shallow");
    conditions.max_depth->set_label("Deep");
    conditions.current->set_label("None");
    conditions.habitat->set_label("Kelp");
    mark(10, 2);
    go_to_page(panel->page);
  }
  void mark(int species_id, int abundance) const
  {
    window->abundance_target = species_id;
    window->on_abundance_menu_item(abundance);
  }
  void refresh() const { panel->refresh(); }

  // Returns whether a label is in bold red.
  bool is_red(const Gtk::Label* label) const
  {
    return label->get_label().raw().find("fgcolor=\"red\"") != std::string::npos;
  }
  void expect_complete(bool complete, const char* why = "") const
  {
    EXPECT_EQ(complete, window->survey.survey_complete) << why;
    EXPECT_EQ(complete, window->ready_button->get_sensitive()) << why;
    EXPECT_EQ(complete, window->upload_button->get_sensitive()) << why;
    EXPECT_EQ(complete ? please_check : please_fix, panel->confirm_instructions->get_text().raw())
        << why;
  }
  // Expects a red name and this value.
  void expect_wrong(const Gtk::Label* name, const Gtk::Label* value, const char* text) const
  {
    EXPECT_TRUE(is_red(name)) << text;
    EXPECT_TRUE(is_red(value)) << text;
    EXPECT_EQ(text, value->get_text().raw());
    expect_complete(false, text);
  }
  void expect_right(const Gtk::Label* name, const Gtk::Label* value, const char* text) const
  {
    EXPECT_FALSE(is_red(name)) << text;
    EXPECT_FALSE(is_red(value)) << text;
    EXPECT_EQ(text, value->get_text().raw());
    expect_complete(true, text);
  }
  static std::vector<std::string> titles(Gtk::TreeView& tree)
  {
    std::vector<std::string> found;
    for (auto* column : tree.get_columns())
      found.push_back(column->get_title());
    return found;
  }

  ConfirmPanel* panel = nullptr;
};

} // namespace

TEST_F(ConfirmPanelTest, FindsNothingWrongWithACompleteSurvey)
{
  open_complete_survey();
  expect_complete(true);
  EXPECT_EQ("1234", panel->conf_member_id->get_text());
  EXPECT_EQ("Miller", panel->conf_last_name->get_text());
  EXPECT_EQ("Northwest: fish and invertebrates", panel->conf_survey_type->get_text());
  EXPECT_EQ("2021-06-30", panel->conf_survey_date->get_text());
  EXPECT_EQ("9 AM", panel->conf_dive_start->get_text());
  EXPECT_EQ("31020003", panel->conf_zone_code->get_text());
  EXPECT_EQ("Washington, San Juan Islands, Rosario Wall", panel->conf_zone_name->get_text());
  EXPECT_EQ("", panel->conf_surface_temp->get_text());
  EXPECT_EQ("45 minutes", panel->conf_bottom_time->get_text());
  EXPECT_EQ("Good", panel->conf_visibility->get_text());
  EXPECT_EQ("Shallow", panel->conf_avg_depth->get_text());
  EXPECT_EQ("Deep", panel->conf_max_depth->get_text());
  EXPECT_EQ("None", panel->conf_current->get_text());
  EXPECT_EQ("Kelp", panel->conf_habitat->get_text());
  EXPECT_EQ("1", panel->conf_total_species->get_text());
}

TEST_F(ConfirmPanelTest, ShowsEverythingThatAnEmptySurveyLacksTogether)
{
  open_window();
  panel = window->confirm_panel;
  go_to_page(panel->page);
  for (const auto* value : {panel->conf_member_id, panel->conf_last_name, panel->conf_survey_date,
                            panel->conf_dive_start, panel->conf_zone_code, panel->conf_bottom_time,
                            panel->conf_visibility, panel->conf_avg_depth, panel->conf_max_depth,
                            panel->conf_current, panel->conf_habitat}) {
    EXPECT_EQ("Required", value->get_text().raw()) << value->get_name();
    EXPECT_TRUE(is_red(value));
  }
  EXPECT_EQ("0", panel->conf_total_species->get_text());
  EXPECT_FALSE(is_red(panel->conf_label_survey_type)); // this page does not require a type
  expect_complete(false);
}

TEST_F(ConfirmPanelTest, RequiresMemberAndName)
{
  open_complete_survey();
  window->member_panel->member_id->set_text("  ");
  refresh();
  expect_wrong(panel->conf_label_member_id, panel->conf_member_id, "Required");
  window->member_panel->member_id->set_text("7");
  window->member_panel->last_name->set_text("");
  refresh();
  EXPECT_FALSE(is_red(panel->conf_label_member_id));
  expect_wrong(panel->conf_label_last_name, panel->conf_last_name, "Required");
}

TEST_F(ConfirmPanelTest, ShowsNamesWithMarkupCharactersAsTyped)
{
  open_complete_survey();
  window->member_panel->last_name->set_text("O'Brien & <Sons>");
  refresh();
  expect_right(panel->conf_label_last_name, panel->conf_last_name, "O'Brien & <Sons>");
}

TEST_F(ConfirmPanelTest, RefusesASurveyTypeThatIsNoLongerAvailable)
{
  open_complete_survey();
  window->survey_panel1->set_survey_subtype_even_invisible("PNW", 4);
  refresh();
  EXPECT_TRUE(is_red(panel->conf_label_survey_type));
  expect_complete(false);
  // A valid type has turned the label's markup off before, so the label shows the tags.
  EXPECT_EQ("<span weight=\"bold\" fgcolor=\"red\">Northwest: old form - No longer "
            "available</span>",
            panel->conf_survey_type->get_text().raw());
}

TEST_F(ConfirmPanelTest, ShowsAnOldSurveyTypeInRedWhenItComesFirst)
{
  open_window();
  panel = window->confirm_panel;
  choose_subregion("Northwest");
  window->survey_panel1->set_survey_subtype_even_invisible("PNW", 4);
  go_to_page(panel->page);
  expect_wrong(panel->conf_label_survey_type, panel->conf_survey_type,
               "Northwest: old form - No longer available");
}

TEST_F(ConfirmPanelTest, MarksAnImpossibleDate)
{
  open_complete_survey();
  auto& when = *window->survey_panel1;
  when.month->set_label("February");
  refresh();
  expect_wrong(panel->conf_label_survey_date, panel->conf_survey_date,
               "2021-02-30      Invalid date");
  when.mday->unset_active();
  refresh();
  expect_wrong(panel->conf_label_survey_date, panel->conf_survey_date, "Required");
}

TEST_F(ConfirmPanelTest, RequiresAStartTime)
{
  open_complete_survey();
  window->survey_panel1->dive_start->unset_active();
  refresh();
  expect_wrong(panel->conf_label_dive_start, panel->conf_dive_start, "Required");
}

TEST_F(ConfirmPanelTest, RequiresACompleteKnownZone)
{
  open_complete_survey();
  window->survey_panel1->zonecode->set_text("3102");
  refresh();
  expect_wrong(panel->conf_label_zone_code, panel->conf_zone_code, "3102   Incomplete zone");
  EXPECT_EQ("Washington, San Juan Islands", panel->conf_zone_name->get_text());
  window->survey_panel1->zonecode->set_text("99999999");
  refresh();
  expect_wrong(panel->conf_label_zone_code, panel->conf_zone_code, "99999999");
  window->survey_panel1->zonecode->set_text("");
  refresh();
  expect_wrong(panel->conf_label_zone_code, panel->conf_zone_code, "Required");
  EXPECT_EQ("<span weight=\"bold\" fgcolor=\"red\"><span weight=\"bold\" "
            "fgcolor=\"red\">Required</span></span>",
            panel->conf_zone_code->get_label().raw());
}

TEST_F(ConfirmPanelTest, ShowsAZoneNameWithAnAmpersandAndASingleBracketLiterally)
{
  application_dir.file("PAC-geog.csv", "geogid,name\n31020003,Hall & Oates <12 m\n");
  open_complete_survey();
  EXPECT_EQ("Hall & Oates <12 m", panel->conf_zone_name->get_text());
}

TEST_F(ConfirmPanelTest, ChecksBothTemperaturesInTheChosenUnit)
{
  open_complete_survey();
  auto& conditions = *window->survey_panel2;
  conditions.surface_temp->set_text(" 20 ");
  refresh();
  expect_wrong(panel->conf_label_surface_temp, panel->conf_surface_temp,
               "20F      Temperature must be between 28F and 97F");
  conditions.temp_units->set_label("Celsius");
  refresh();
  expect_right(panel->conf_label_surface_temp, panel->conf_surface_temp, "20C");
  conditions.bottom_temp->set_text("37");
  refresh();
  expect_wrong(panel->conf_label_bottom_temp, panel->conf_bottom_temp,
               "37C      Temperature must be between -2C and 36C");
}

TEST_F(ConfirmPanelTest, TreatsAMissingLimitAsZero)
{
  open_complete_survey();
  window->survey_panel2->temp_units->unset_active();
  window->survey_panel2->surface_temp->set_text("5");
  refresh();
  expect_wrong(panel->conf_label_surface_temp, panel->conf_surface_temp,
               "5      Temperature must be between 0 and 0");
}

TEST_F(ConfirmPanelTest, RequiresTheConfirmationOfAnUnusualBottomTime)
{
  open_complete_survey();
  auto& conditions = *window->survey_panel2;
  EXPECT_FALSE(panel->confirm_bottom_time->get_visible());
  conditions.bottom_time->set_text("121");
  refresh();
  expect_wrong(panel->conf_label_bottom_time, panel->conf_bottom_time, "121 minutes");
  EXPECT_TRUE(panel->confirm_bottom_time->get_visible());
  EXPECT_EQ("Confirm unusual bottom time", panel->confirm_bottom_time->get_label());

  panel->confirm_bottom_time->set_active(true); // refreshes the page
  expect_right(panel->conf_label_bottom_time, panel->conf_bottom_time, "121 minutes");
  EXPECT_TRUE(panel->confirm_bottom_time->get_visible());
  EXPECT_EQ("Unusual bottom time confirmed", panel->confirm_bottom_time->get_label());

  panel->confirm_bottom_time->set_active(false);
  expect_wrong(panel->conf_label_bottom_time, panel->conf_bottom_time, "121 minutes");
}

TEST_F(ConfirmPanelTest, HidesTheConfirmationOfAUsualOrMissingTime)
{
  open_complete_survey();
  auto& conditions = *window->survey_panel2;
  for (const char* usual : {"15", "120"}) {
    conditions.bottom_time->set_text(usual);
    refresh();
    expect_complete(true, usual);
    EXPECT_FALSE(panel->confirm_bottom_time->get_visible()) << usual;
  }
  conditions.bottom_time->set_text(" ");
  refresh();
  expect_wrong(panel->conf_label_bottom_time, panel->conf_bottom_time, "Required");
  EXPECT_FALSE(panel->confirm_bottom_time->get_visible());
}

TEST_F(ConfirmPanelTest, RequiresEachConditionOfASurveyWithAbundance)
{
  open_complete_survey();
  auto& conditions = *window->survey_panel2;
  const struct {
    DropDownBox* box;
    const Gtk::Label* name;
    const Gtk::Label* value;
  } cases[] = {
      {conditions.visibility, panel->conf_label_visibility, panel->conf_visibility},
      {conditions.avg_depth, panel->conf_label_avg_depth, panel->conf_avg_depth},
      {conditions.max_depth, panel->conf_label_max_depth, panel->conf_max_depth},
      {conditions.current, panel->conf_label_current, panel->conf_current},
      {conditions.habitat, panel->conf_label_habitat, panel->conf_habitat},
  };
  for (const auto& c : cases) {
    const int chosen = c.box->get_id();
    c.box->unset_active();
    refresh();
    expect_wrong(c.name, c.value, "Required");
    c.box->set_id(chosen);
    refresh();
    expect_complete(true);
  }
}

TEST_F(ConfirmPanelTest, RequiresOnlyTheBottomTimeOfASpeciesOnlySurvey)
{
  open_complete_survey("Northwest: species only");
  auto& conditions = *window->survey_panel2;
  for (auto* box : {conditions.visibility, conditions.avg_depth, conditions.max_depth,
                    conditions.current, conditions.habitat})
    box->unset_active();
  refresh();
  expect_right(panel->conf_label_visibility, panel->conf_visibility, "");
  conditions.bottom_time->set_text("");
  refresh();
  expect_wrong(panel->conf_label_bottom_time, panel->conf_bottom_time, "Required");
}

TEST_F(ConfirmPanelTest, RequiresAMaximumDepthNoLessThanTheAverageDepth)
{
  open_complete_survey();
  auto& conditions = *window->survey_panel2;
  conditions.avg_depth->set_label("Deep");
  conditions.max_depth->set_label("Shallow");
  refresh();
  EXPECT_TRUE(is_red(panel->conf_label_max_depth));
  EXPECT_EQ("Shallow  Must be no less than Average Depth", panel->conf_max_depth->get_text().raw());
  expect_complete(false);
  conditions.max_depth->set_label("Deep");
  refresh();
  expect_right(panel->conf_label_max_depth, panel->conf_max_depth, "Deep");
}

TEST_F(ConfirmPanelTest, AlsoRefusesAnAverageWithoutAMaximumDepthInASpeciesOnlySurvey)
{
  open_complete_survey("Northwest: species only");
  window->survey_panel2->max_depth->unset_active();
  refresh();
  EXPECT_TRUE(is_red(panel->conf_label_max_depth));
  EXPECT_EQ("  Must be no less than Average Depth", panel->conf_max_depth->get_text().raw());
}

TEST_F(ConfirmPanelTest, TreatsAPromptInTheHabitatBoxAsNoChoice)
{
  open_complete_survey();
  window->survey_panel2->habitat->add_item(77, "(please choose)");
  window->survey_panel2->habitat->set_id(77);
  refresh();
  expect_wrong(panel->conf_label_habitat, panel->conf_habitat, "Required");
  choose_survey_type("Northwest: species only");
  refresh();
  expect_right(panel->conf_label_habitat, panel->conf_habitat, "");
}

TEST_F(ConfirmPanelTest, RequiresASpeciesInOrOutsideTheView)
{
  open_complete_survey();
  mark(10, 0);
  refresh();
  expect_wrong(panel->conf_label_total_species, panel->conf_total_species, "0");
  EXPECT_FALSE(panel->conf_listed_box->get_visible());
  EXPECT_FALSE(panel->conf_unlisted_box->get_visible());

  mark(12, 1); // in no view
  refresh();
  expect_right(panel->conf_label_total_species, panel->conf_total_species, "1");
  EXPECT_FALSE(panel->conf_listed_box->get_visible());
  EXPECT_TRUE(panel->conf_unlisted_box->get_visible());
  EXPECT_EQ("Unlisted Species: 1", panel->conf_unlisted_species->get_text());

  mark(10, 1);
  mark(11, 1);
  refresh();
  expect_right(panel->conf_label_total_species, panel->conf_total_species, "3");
  EXPECT_TRUE(panel->conf_listed_box->get_visible());
  EXPECT_EQ("Listed Species: 2", panel->conf_listed_species->get_text());
}

TEST_F(ConfirmPanelTest, SummarisesTheMarkedSpeciesUnderTheirFamilies)
{
  open_complete_survey();
  mark(12, 2);
  refresh();
  const auto& columns = window->species_columns;
  const auto listed = panel->conf_listed_tree->get_model()->children();
  ASSERT_EQ(1U, listed.size());
  EXPECT_EQ(-1, listed[0].get_value(columns.col_id));
  ASSERT_EQ(1U, listed[0].children().size());
  EXPECT_EQ(10, listed[0].children()[0].get_value(columns.col_id));
  EXPECT_TRUE(panel->conf_listed_tree->row_expanded(Gtk::TreePath("0")));
  const auto unlisted = panel->conf_unlisted_tree->get_model()->children();
  ASSERT_EQ(1U, unlisted.size());
  ASSERT_EQ(1U, unlisted[0].children().size());
  EXPECT_EQ(12, unlisted[0].children()[0].get_value(columns.col_id));
  EXPECT_EQ("Few (2-10)", unlisted[0].children()[0].get_value(columns.col_abundance_label).raw());
}

TEST_F(ConfirmPanelTest, HasColumnsForTheShownNamesFromTheStart)
{
  open_window();
  panel = window->confirm_panel;
  const std::vector<std::string> both{"ID", "Common + Scientific Names", "Number seen"};
  EXPECT_EQ(both, titles(*panel->conf_listed_tree));
  EXPECT_EQ(both, titles(*panel->conf_unlisted_tree));
  window->listed_panel->name_display_common->set_active();
  window->listed_panel->spanish_enable->set_active();
  refresh();
  const std::vector<std::string> common{"ID", "Common Name", "Spanish Name", "Number seen"};
  EXPECT_EQ(common, titles(*panel->conf_listed_tree));
  EXPECT_EQ(common, titles(*panel->conf_unlisted_tree));
}

TEST_F(ConfirmPanelTest, CollapsesAFamilyThatIsClickedButNotSpecies)
{
  open_complete_survey();
  auto& tree = *panel->conf_listed_tree;
  tree.set_cursor(Gtk::TreePath("0:0"));
  EXPECT_TRUE(tree.row_expanded(Gtk::TreePath("0")));
  tree.set_cursor(Gtk::TreePath("0"));
  EXPECT_FALSE(tree.row_expanded(Gtk::TreePath("0")));
  panel->on_listed_clicked();
  EXPECT_TRUE(tree.row_expanded(Gtk::TreePath("0")));
  EXPECT_EQ(2, window->survey.abundances[10]);
}

TEST_F(ConfirmPanelTest, TracesTheSelectedRow)
{
  open_complete_survey();
  panel->conf_listed_tree->set_cursor(Gtk::TreePath("0:0"));
  EXPECT_EQ("species selected: id 10: Longfin Sculpin\n",
            output_of(30, [&] { panel->on_listed_clicked(); }));
}

TEST_F(ConfirmPanelTest, DisablesTheButtonsForAnUploadedSurvey)
{
  open_complete_survey();
  window->survey.is_uploaded = true;
  refresh();
  EXPECT_TRUE(window->survey.survey_complete);
  EXPECT_FALSE(window->ready_button->get_sensitive());
  EXPECT_FALSE(window->upload_button->get_sensitive());
}

TEST_F(ConfirmPanelTest, IsRefreshedByTurningToThePage)
{
  open_complete_survey();
  go_to_page(window->member_panel->page);
  window->member_panel->member_id->set_text("");
  expect_complete(true); // not checked again yet
  go_to_page(panel->page);
  expect_wrong(panel->conf_label_member_id, panel->conf_member_id, "Required");
}

TEST_F(ConfirmPanelTest, MarksInRedOnlyOnce)
{
  open_window();
  panel = window->confirm_panel;
  Gtk::Label& label = *panel->conf_label_member_id;
  const std::string before = label.get_label();
  panel->clear_redbold(&label);
  EXPECT_EQ(before, label.get_label().raw());
  panel->set_redbold(&label);
  panel->set_redbold(&label);
  EXPECT_EQ("<span weight=\"bold\" fgcolor=\"red\">" + before + "</span>", label.get_label().raw());
  panel->clear_redbold(&label);
  EXPECT_EQ(before, label.get_label().raw());
}

TEST_F(ConfirmPanelTest, NeverMarksAFieldThatIsNotRequired)
{
  open_window();
  panel = window->confirm_panel;
  bool ok = true;
  EXPECT_TRUE(
      panel->set_simple_field(panel->conf_label_member_id, panel->conf_member_id, "", ok, 0));
  EXPECT_TRUE(ok);
}

// --- without a mouse ---

TEST_F(ConfirmPanelTest, CountsTheMarkedEntriesInOneLine)
{
  open_complete_survey();
  EXPECT_EQ("Complete", panel->confirm_verdict->get_label());
  window->member_panel->last_name->set_text("");
  refresh();
  EXPECT_EQ("1 entry is missing or needs a look", panel->confirm_verdict->get_label());
  window->survey_panel2->bottom_temp->set_text("900");
  window->survey_panel1->zonecode->set_text("3");
  window->survey_panel2->max_depth->set_label("Shallow");
  window->survey_panel2->avg_depth->set_label("Deep");
  refresh();
  EXPECT_EQ("4 entries are missing or need a look", panel->confirm_verdict->get_label());
}

TEST_F(ConfirmPanelTest, GivesTheFocusToTheVerdictFirst)
{
  open_complete_survey();
  window->set_focus(*window->notebook);
  panel->child_focus(Gtk::DIR_TAB_FORWARD);
  EXPECT_TRUE(panel->confirm_verdict->is_focus());
}

TEST_F(ConfirmPanelTest, GoesFromTheVerdictToTheFirstMarkedEntry)
{
  open_complete_survey();
  const auto expect_field = [this](int page, const Gtk::Widget* field, const char* what) {
    go_to_page(panel->page);
    refresh();
    panel->confirm_verdict->grab_focus();
    press_key(*window, GDK_KEY_Return);
    EXPECT_EQ(page, window->notebook->get_current_page()) << what;
    const auto* focus = window->get_focus();
    EXPECT_TRUE(focus && (focus == field || focus->is_ancestor(*const_cast<Gtk::Widget*>(field))))
        << what;
  };
  auto& conditions = *window->survey_panel2;
  conditions.bottom_time->set_text("2");
  go_to_page(panel->page);
  expect_field(panel->page, panel->confirm_bottom_time, "to be confirmed here");
  conditions.bottom_time->set_text("");
  expect_field(conditions.page, conditions.bottom_time, "missing");
  window->survey_panel1->mday->set_id(0);
  expect_field(window->survey_panel1->page, window->survey_panel1->mday, "part of the date");
  window->member_panel->member_id->set_text("");
  expect_field(window->member_panel->page, window->member_panel->member_id, "the first of all");
}

TEST_F(ConfirmPanelTest, GoesFromTheVerdictOfACompleteSurveyToMarkForUpload)
{
  open_complete_survey();
  panel->confirm_verdict->grab_focus();
  press_key(*window, GDK_KEY_Return);
  EXPECT_EQ(panel->page, window->notebook->get_current_page());
  EXPECT_TRUE(window->ready_button->is_focus());
}

TEST_F(ConfirmPanelTest, DoesNotCollapseAFamilyByTabOrArrows)
{
  open_complete_survey();
  auto& tree = *panel->conf_listed_tree;
  panel->confirm_verdict->grab_focus();
  for (int tabs = 0; tabs < 5 && !tree.is_focus(); ++tabs)
    press_key(*window, GDK_KEY_Tab);
  ASSERT_TRUE(tree.is_focus());
  EXPECT_TRUE(tree.row_expanded(Gtk::TreePath("0")));
  for (const guint key : {guint{GDK_KEY_Down}, guint{GDK_KEY_Up}, guint{GDK_KEY_Home}}) {
    press_key(*window, key);
    EXPECT_TRUE(tree.row_expanded(Gtk::TreePath("0"))) << key;
  }
  press_key(*window, GDK_KEY_minus);
  EXPECT_FALSE(tree.row_expanded(Gtk::TreePath("0")));
  go_to_page(window->member_panel->page);
  go_to_page(panel->page);
  EXPECT_TRUE(tree.row_expanded(Gtk::TreePath("0"))) << "expanded at each visit to the page";
}

namespace {

// Adds the labels below an accessible object in the order of a screen reader.
void add_labels(const Glib::RefPtr<Atk::Object>& thing, std::vector<std::string>& labels)
{
  const auto role = thing->get_role();
  if (role == Atk::ROLE_LABEL || role == Atk::ROLE_STATIC)
    labels.push_back(thing->get_name());
  for (int i = 0; i < thing->get_n_accessible_children(); ++i)
    add_labels(thing->get_accessible_child(i), labels);
}

} // namespace

TEST_F(ConfirmPanelTest, IsReadInItsVisualOrder)
{
  open_complete_survey();
  std::vector<std::string> labels;
  add_labels(panel->get_accessible(), labels);
  const auto number = [&](const char* label) {
    return std::find(labels.begin(), labels.end(), label) - labels.begin();
  };
  const char* const seen[] = {please_check,     "Survey",
                              "Member number:", "1234",
                              "Last name:",     "Miller",
                              "Zone code:",     "31020003",
                              "Conditions",     "Surface temperature:",
                              "Habitat:",       "Kelp"};
  std::ptrdiff_t before = -1;
  for (const char* label : seen) {
    EXPECT_GT(number(label), before) << label;
    EXPECT_LT(number(label), std::ptrdiff_t(labels.size())) << label;
    before = number(label);
  }
}
