#include "store/saving-test.h"
#include "store/survey-file.h"
#include "support/dialogs.h"
#include "ui/survey-panel1.h"
#include "ui/survey-panel2.h"
#include "ui/survey-window.h"

namespace {

// Tests surveys from older or newer data files than those of the program.
class SurveyOfOtherData : public SavingTest
{
public:
  void SetUp() override
  {
    // Adds a location that offers no new surveys.
    append("region-info.csv", "PAC,OLD,Pacific,Old Harbour,7,Old: abundance,1,1,0,0,0\n");
    append("abundance-choices.csv", "701,7,Single (1),1\n");
    SavingTest::SetUp();
  }

  void append(const std::string& name, const std::string& row) const
  {
    application_dir.file(name, read_file("data-files/" + name) + row);
  }
  std::string put(const SurveyFile& file) const
  {
    std::string path = path_of(MyApp::WD_IN_PROGRESS, "saved");
    write_file(path, file.text());
    return path;
  }
  // Opens the file in a new window, which becomes `window`. Returns the path of the file.
  std::string open(const SurveyFile& file)
  {
    std::string path = put(file);
    create_window();
    expect_no_dialog([&] { EXPECT_EQ(RET_SUCCESS, window->do_open(path)); });
    EXPECT_FALSE(window->file_needs_saving());
    return path;
  }
  std::string saved_again() const
  {
    save_quietly(*window, MyApp::WD_IN_PROGRESS);
    return read_file(window->survey.filename);
  }
  // Saves, expects a refusal, and returns its text.
  std::string refusal() const
  {
    return answer_next_dialog(Gtk::RESPONSE_OK,
                              [&] {
                                EXPECT_EQ(RET_FAILURE, window->do_save(MyApp::WD_IN_PROGRESS,
                                                                       SurveyWindow::SAVE_QUIET));
                              })
        .text.raw();
  }
};

bool contains(const std::string& text, const std::string& words)
{
  return text.find(words) != std::string::npos;
}

} // namespace

TEST_F(SurveyOfOtherData, KeepsAnUnknownZone)
{
  open(SurveyFile().with("zonecode", "<zonecode>77770001</zonecode>"));
  EXPECT_EQ("Zone Unknown  ", window->survey_panel1->zone_name_status->get_text());
  EXPECT_TRUE(contains(saved_again(), "<zonecode>77770001</zonecode>"));
}

TEST_F(SurveyOfOtherData, KeepsALocationThatOffersNoNewSurveys)
{
  open(SurveyFile()
           .with("subregion", "<subregion>OLD</subregion>")
           .with("survey_subtype", "<survey_subtype>7</survey_subtype>")
           .with("ids", "<ids><species id=\"0010\" abun=\"1\"/></ids>"));
  const std::string saved = saved_again();
  EXPECT_TRUE(contains(saved, "<subregion>OLD</subregion>"));
  EXPECT_TRUE(contains(saved, "<survey_subtype>7</survey_subtype>"));
  EXPECT_TRUE(contains(saved, "<species id=\"0010\" abun=\"1\" resp=\"701\"/>"));
}

TEST_F(SurveyOfOtherData, KeepsSpeciesOfAnotherRegion)
{
  open(SurveyFile().with("ids", "<ids><species id=\"0001\" abun=\"1\"/></ids>"));
  EXPECT_TRUE(contains(saved_again(), "<species id=\"0001\" abun=\"1\" resp=\"301\"/>"));
}

TEST_F(SurveyOfOtherData, WithAnUnknownAbundanceIsShownButNeverWrittenWithoutIt)
{
  const SurveyFile file = SurveyFile().with("ids", "<ids><species id=\"0010\" abun=\"7\"/></ids>");
  const std::string path = open(file);
  EXPECT_EQ(7, window->survey.abundances.at(10));
  EXPECT_TRUE(contains(refusal(), "Internal error: abun 7 -> resp -1?!"));
  EXPECT_EQ(file.text(), read_file(path));
  window->survey_panel2->bottom_temp->set_text("51");
  EXPECT_TRUE(window->file_needs_saving());
  window->survey_panel2->bottom_temp->set_text("50");
  EXPECT_FALSE(window->file_needs_saving());
  window->survey.abundances[10] = 2;
  EXPECT_TRUE(window->file_needs_saving());
  EXPECT_TRUE(contains(saved_again(), "<species id=\"0010\" abun=\"2\" resp=\"302\"/>"));
}

TEST_F(SurveyOfOtherData, OfAnUnknownTypeIsShownButNeverWrittenWithoutItsSpecies)
{
  const SurveyFile file =
      SurveyFile().with("survey_subtype", "<survey_subtype>55</survey_subtype>");
  const std::string path = open(file);
  EXPECT_EQ(-1, window->survey_panel1->survey_subtype->get_id());
  EXPECT_TRUE(contains(refusal(), "Internal error: abun 2 -> resp -1?!"));
  EXPECT_EQ(file.text(), read_file(path));
}

TEST_F(SurveyOfOtherData, WithASpeciesIdBeyondTheRangeIsRefused)
{
  create_window();
  const std::string path = put(SurveyFile().with(
      "ids", "<ids><species id=\"4294967306\" abun=\"1\"/></ids>")); // 10 in 32 bits
  const SeenDialog seen =
      answer_next_dialog(Gtk::RESPONSE_OK, [&] { EXPECT_EQ(RET_FAILURE, window->do_open(path)); });
  EXPECT_TRUE(contains(seen.text.raw(), "MAVO Survey has invalid id (2147483647)")) << seen.text;
}
