#include "data/data-defs.h"
#include "data/habitat-info.h"
#include "data/region-info.h"
#include "store/random-survey.h"
#include "store/read-survey.h"
#include "store/saving-test.h"
#include "store/survey-document.h"
#include "store/survey-judgement.h"
#include "support/dialogs.h"
#include "ui/confirm-panel.h"
#include "ui/survey-window.h"

#include <cstdio>
#include <ctime>
#include <set>

namespace {

// Windows with the data set that ships with the program.
class JudgementOfWindows : public SavingTest
{
public:
  void SetUp() override
  {
    application_dir.use_shipped_data();
    SavingTest::SetUp();
  }
  int below(int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); }

  // Replaces most entries with values that the page accepts, because completely random
  // surveys are never complete.
  void improve(Survey& form, const RandomSurvey& survey)
  {
    const auto mostly = [this] { return below(6) != 0; };
    form.member_id = mostly() ? "1234" : " ";
    form.last_name = mostly() ? "Miller" : "";
    if (mostly()) {
      form.year = std::to_string(2015 + below(5));
      form.month = 1 + below(12);
      form.mday = 1 + below(28);
    }
    if (mostly())
      form.dive_start = 1 + below(24);
    if (mostly())
      form.zonecode = std::to_string(survey.data.region_fish->geog_ids.back());
    improve_conditions(form);
  }
  void improve_conditions(Survey& form)
  {
    const auto mostly = [this] { return below(6) != 0; };
    const char* const good_temp = form.temp_units.raw() == "C" ? "12" : "55";
    form.surface_temp = mostly() ? good_temp : "98";
    form.bottom_temp = mostly() ? good_temp : "-3";
    if (mostly())
      form.bottom_time = "45";
    if (mostly())
      form.visibility = form.current = 1 + below(4);
    if (mostly()) {
      form.avg_depth = 1 + below(7);
      form.max_depth = form.avg_depth + below(8);
    }
    if (mostly() && form.habitat < 0)
      form.habitat = 1;
  }
  // Returns the names of the elements of the document whose entries the page marks.
  std::set<std::string> marked() const;

  std::mt19937 random{20211218};
};

std::set<std::string> JudgementOfWindows::marked() const
{
  const ConfirmPanel& page = *window->confirm_panel;
  const struct {
    const char* field;
    const Gtk::Label* label;
  } entries[] = {
      {"member_id", page.conf_label_member_id},
      {"last_name", page.conf_label_last_name},
      {"survey_subtype", page.conf_label_survey_type},
      {"year", page.conf_label_survey_date},
      {"dive_start", page.conf_label_dive_start},
      {"zonecode", page.conf_label_zone_code},
      {"surface_temp", page.conf_label_surface_temp},
      {"bottom_temp", page.conf_label_bottom_temp},
      {"bottom_time", page.conf_label_bottom_time},
      {"visibility", page.conf_label_visibility},
      {"avg_depth", page.conf_label_avg_depth},
      {"max_depth", page.conf_label_max_depth},
      {"current", page.conf_label_current},
      {"habitat", page.conf_label_habitat},
      {"ids", page.conf_label_total_species},
  };
  std::set<std::string> fields;
  for (const auto& [field, label] : entries)
    if (label->get_label().raw().rfind(page.red_begin.raw(), 0) == 0)
      fields.insert(field);
  return fields;
}

std::set<std::string> fields_of(const std::vector<SurveyComplaint>& complaints)
{
  std::set<std::string> fields;
  for (const SurveyComplaint& complaint : complaints)
    fields.insert(complaint.field);
  return fields;
}

} // namespace

TEST_F(JudgementOfWindows, AgreesWithTheConfirmationPageOnRandomSurveys)
{
  RandomSurveys surveys({*my_app->region_info, *my_app->abundance_choices, *my_app->habitat_info,
                         *my_app->data_defs});
  const std::string path = application_dir.root + "/survey.MAVO-Survey";
  constexpr int count = 40;
  int complete = 0;
  std::set<std::string> ever_marked;
  RecordProperty("tried", count);
  for (int i = 0; i < count && !HasFailure(); ++i) {
    SCOPED_TRACE("survey " + std::to_string(i));
    RandomSurvey survey;
    surveys.make(survey);
    improve(survey.form, survey);
    survey.form.species = species_sightings(survey.data, *my_app->abundance_choices);
    write_file(path, survey_document(survey.form, "").raw());

    create_window();
    expect_no_dialog([&] { EXPECT_EQ(RET_SUCCESS, window->do_open(path)); });
    window->confirm_panel->refresh();
    const auto complaints =
        survey_complaints(read_survey(path), my_app->reference_data(), std::time(nullptr));
    EXPECT_EQ(marked(), fields_of(complaints));
    EXPECT_EQ(window->survey.survey_complete, complaints.empty());
    complete += complaints.empty() ? 1 : 0;
    ever_marked.merge(marked());
  }
  EXPECT_LT(3, complete);
  EXPECT_LE(12U, ever_marked.size()); // of 15 entries
  std::printf("%d of %d surveys were complete\n", complete, count);
}
