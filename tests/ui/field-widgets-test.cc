#include "data/data-defs.h"
#include "store/survey-fields.h"
#include "support/window-fixture.h"
#include "ui/confirm-panel.h"
#include "ui/drop-down-box.h"
#include "ui/listed-panel.h"
#include "ui/survey-panel2.h"
#include "ui/survey-window.h"

#include <set>
#include <string>

namespace {

// Returns the id of a widget in the definition file.
std::string id_of(Gtk::Widget& widget)
{
  return gtk_buildable_get_name(GTK_BUILDABLE(widget.gobj()));
}

class FieldWidgetsTest : public WindowTest
{
public:
  void SetUp() override
  {
    WindowTest::SetUp();
    open_window();
  }

  const SurveyField& field(const char* name) const { return *find_survey_field(name); }

  // Returns the names of the fields whose input is insensitive.
  std::set<std::string> locked() const
  {
    std::set<std::string> names;
    for (const SurveyField& row : survey_fields())
      if (!window->fields.input(row).get_sensitive())
        names.insert(row.name);
    return names;
  }
};

} // namespace

TEST_F(FieldWidgetsTest, AreInTheDefinitionFileForEveryRowOfTheTable)
{
  for (const SurveyField& row : survey_fields()) {
    EXPECT_EQ(row.name, id_of(window->fields.input(row)));
    if (row.summary) {
      EXPECT_EQ(std::string("conf_label_") + row.summary, id_of(window->fields.summary_name(row)));
      EXPECT_EQ(std::string("conf_") + row.summary, id_of(window->fields.summary_value(row)));
    }
  }
}

TEST_F(FieldWidgetsTest, AreTheWidgetsOfThePanels)
{
  EXPECT_EQ(window->survey_panel2->visibility, &window->fields.box(field("visibility")));
  EXPECT_EQ(window->survey_panel2->bottom_time, &window->fields.entry(field("bottom_time")));
  EXPECT_EQ(window->listed_panel->species_view, &window->fields.box(field("species_view")));
  EXPECT_EQ(window->confirm_panel->conf_habitat, &window->fields.summary_value(field("habitat")));
}

TEST_F(FieldWidgetsTest, OfferTheChoicesThatTheTableNames)
{
  const auto& defs = window->reference_data.data_defs->defs;
  for (const SurveyField& row : survey_fields()) {
    if (!row.choices)
      continue;
    const auto& choices = defs.at(row.choices);
    ASSERT_EQ(choices.values.size(), window->fields.box(row).items.size()) << row.name;
    for (std::size_t i = 0; i < choices.values.size(); ++i)
      EXPECT_EQ(choices.values[i], window->fields.box(row).items[i].first) << row.name;
  }
}

TEST_F(FieldWidgetsTest, ReturnTheirValuesAsTheDocumentStoresThem)
{
  window->survey_panel2->bottom_time->set_text("  45 ");
  window->survey_panel2->visibility->set_label("Good");
  window->survey_panel2->set_temp_units_short("C");
  EXPECT_EQ("45", window->fields.text(field("bottom_time")));
  EXPECT_EQ(std::to_string(window->survey_panel2->visibility->get_id()),
            window->fields.text(field("visibility")).raw());
  EXPECT_EQ("C", window->fields.text(field("temp_units")));
  EXPECT_EQ("0000", window->fields.text(field("year")));
  EXPECT_EQ("00", window->fields.text(field("month")));
  EXPECT_EQ("-1", window->fields.text(field("habitat")));
  EXPECT_EQ("Good", window->fields.shown_text(field("visibility")));
}

TEST_F(FieldWidgetsTest, AreLockedInAnUploadedSurveyExceptForTheView)
{
  choose_subregion("Northwest");
  EXPECT_EQ(std::set<std::string>(), locked());
  window->set_survey_is_uploaded();
  std::set<std::string> all;
  for (const SurveyField& row : survey_fields())
    all.insert(row.name);
  all.erase("species_view");
  EXPECT_EQ(all, locked());
}
