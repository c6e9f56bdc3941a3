#include "core/number.h"
#include "data/data-defs.h"
#include "data/habitat-info.h"
#include "data/region-info.h"
#include "store/random-survey.h"
#include "store/saving-test.h"
#include "store/survey-fields.h"
#include "support/dialogs.h"
#include "support/sanitizer.h"
#include "ui/confirm-panel.h"
#include "ui/listed-panel.h"
#include "ui/member-panel.h"
#include "ui/survey-panel1.h"
#include "ui/survey-panel2.h"
#include "ui/survey-window.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <set>

namespace {

// Windows with the shipped data set.
class RoundTripOfWindows : public SavingTest
{
public:
  void SetUp() override
  {
    application_dir.use_shipped_data();
    SavingTest::SetUp();
  }
};

// Returns the text without characters that a file name cannot have.
Glib::ustring file_name_part(const Glib::ustring& text)
{
  std::string bytes = text.raw();
  std::replace(bytes.begin(), bytes.end(), '/', '-');
  return bytes;
}

void enter_place_and_time(SurveyWindow& window, const Survey& form)
{
  SurveyPanel1& panel = *window.survey_panel1;
  panel.setup_for_subregion(form.subregion);
  panel.survey_subtype->set_id(form.survey_subtype);
  panel.year->set_label(form.year);
  panel.month->set_id(form.month);
  panel.mday->set_id(form.mday);
  panel.dive_start->set_id(form.dive_start);
  panel.zonecode->set_text(file_name_part(form.zonecode));
}

void enter_conditions(SurveyWindow& window, const Survey& form)
{
  SurveyPanel2& panel = *window.survey_panel2;
  panel.surface_temp->set_text(form.surface_temp);
  panel.bottom_temp->set_text(form.bottom_temp);
  panel.set_temp_units_short(form.temp_units);
  panel.bottom_time->set_text(form.bottom_time);
  for (const SurveyField& field : survey_fields())
    if (field.choices)
      window.fields.box(field).set_id(to_int(field_text(field, form)));
  panel.habitat->set_id(form.habitat);
  window.confirm_panel->confirm_bottom_time->set_active(form.bottom_time_confirmed);
}

// Enters the survey as a user would, without a file.
void enter(SurveyWindow& window, const RandomSurvey& survey)
{
  window.survey.abundances.clear(); // otherwise the change of location asks a question
  window.member_panel->member_id->set_text(file_name_part(survey.form.member_id));
  window.member_panel->last_name->set_text(survey.form.last_name);
  enter_place_and_time(window, survey.form);
  enter_conditions(window, survey.form);
  if (survey.form.species_view >= 0) // a location always has a view
    window.listed_panel->species_view->set_id(survey.form.species_view);
  window.survey.abundances = survey.data.abundances;
  window.survey.filename.clear();
  window.survey.file_etag.clear();
}

std::set<int> marked(const SurveyData& survey)
{
  std::set<int> ids;
  for (const auto& [id, abundance] : survey.abundances)
    if (abundance != 0)
      ids.insert(id);
  return ids;
}

} // namespace

TEST_F(RoundTripOfWindows, WritesTheSameBytesAgainInEverySubregion)
{
  RandomSurveys surveys({*my_app->region_info, *my_app->abundance_choices, *my_app->habitat_info,
                         *my_app->data_defs});
  SurveyWindow* const entry = window;
  constexpr int count = 54 / case_step;
  std::set<std::string> subregions;
  RecordProperty("tried", count);
  for (int i = 0; i < count && !HasFailure(); ++i) {
    SCOPED_TRACE("survey " + std::to_string(i));
    RandomSurvey survey;
    surveys.make(survey);
    enter(*entry, survey);
    save_quietly(*entry, i % 2 == 0 ? MyApp::WD_IN_PROGRESS : MyApp::WD_READY_TO_UPLOAD);
    const std::string path = entry->survey.filename;
    const std::string written = read_file(path);

    create_window();
    expect_no_dialog([&] { EXPECT_EQ(RET_SUCCESS, window->do_open(path)); });
    EXPECT_FALSE(window->file_needs_saving());
    EXPECT_EQ(marked(survey.data), marked(window->survey));
    save_quietly(*window, i % 2 == 0 ? MyApp::WD_IN_PROGRESS : MyApp::WD_READY_TO_UPLOAD);
    EXPECT_EQ(path, window->survey.filename);
    EXPECT_EQ(written, read_file(path));
    std::filesystem::remove(path);
    subregions.insert(survey.form.subregion.raw());
  }
  EXPECT_EQ(my_app->region_info->subregion_regions.size(), subregions.size());
  std::printf("%d surveys saved, opened and saved again through windows, in %zu subregions\n",
              count, subregions.size());
}
