#include "store/saving-test.h"
#include "store/survey-file.h"
#include "support/dialogs.h"
#include "support/main-loop.h"
#include "support/output.h"
#include "ui/confirm-panel.h"
#include "ui/listed-panel.h"
#include "ui/member-panel.h"
#include "ui/start-panel.h"
#include "ui/survey-panel1.h"
#include "ui/survey-panel2.h"
#include "ui/survey-window.h"
#include "ui/unlisted-panel.h"

#include <gtkmm/application.h>
#include <gtkmm/messagedialog.h>

#include <filesystem>

namespace fs = std::filesystem;

namespace {

class OpenSurvey : public SavingTest
{
public:
  // Writes a file to the store.
  std::string put(const std::string& text, MyApp::WhichDir which = MyApp::WD_IN_PROGRESS,
                  const std::string& name = "saved") const
  {
    std::string path = path_of(which, name);
    write_file(path, text);
    return path;
  }
  // Opens a file in a new window, which becomes `window`.
  void open(const std::string& path)
  {
    RetCode result = RET_FAILURE;
    create_window();
    expect_no_dialog([&] { result = window->do_open(path); });
    EXPECT_EQ(RET_SUCCESS, result);
  }
  void open(const SurveyFile& file) { open(put(file.text())); }

  // Tries to open a text as a survey. Returns the text of the dialog after the path.
  std::string failure_of(const std::string& text)
  {
    const std::string path = put(text);
    create_window();
    RetCode result = RET_SUCCESS;
    const SeenDialog seen =
        answer_next_dialog(Gtk::RESPONSE_OK, [&] { result = window->do_open(path); });
    EXPECT_EQ(RET_FAILURE, result);
    EXPECT_EQ("ERROR: Survey NOT loaded!", seen.title);
    const std::string said = seen.text.raw();
    EXPECT_EQ(0U, said.find(path + ": ")) << said;
    return said.substr(std::min(said.size(), path.size() + 2));
  }
};

} // namespace

TEST_F(OpenSurvey, RestoresEverythingThatWasSaved)
{
  const std::string path = put(SurveyFile().text());
  open(path);
  const SurveyPanel1& where = *window->survey_panel1;
  const SurveyPanel2& conditions = *window->survey_panel2;
  EXPECT_EQ("1234", window->member_panel->get_member_id());
  EXPECT_EQ("Núñez & <Sons>", window->member_panel->get_last_name());
  EXPECT_EQ("Northwest", where.subregion->get_label());
  EXPECT_EQ(3, where.survey_subtype->get_id());
  EXPECT_EQ("2021 June 30 9 AM", where.year->get_label() + " " + where.month->get_label() + " " +
                                     where.mday->get_label() + " " + where.dive_start->get_label());
  EXPECT_EQ("31020003", where.get_zonecode());
  EXPECT_EQ("55", conditions.surface_temp->get_text());
  EXPECT_EQ("50", conditions.bottom_temp->get_text());
  EXPECT_EQ("Fahrenheit", conditions.temp_units->get_label());
  EXPECT_EQ("130", conditions.bottom_time->get_text());
  EXPECT_TRUE(window->confirm_panel->confirm_bottom_time->get_active());
  EXPECT_EQ("Good", conditions.visibility->get_label());
  EXPECT_EQ("Shallow", conditions.avg_depth->get_label());
  EXPECT_EQ("Deep", conditions.max_depth->get_label());
  EXPECT_EQ("None", conditions.current->get_label());
  EXPECT_EQ(3, conditions.habitat->get_id());
  EXPECT_EQ(2, window->listed_panel->species_view->get_id());
  EXPECT_EQ(2, window->survey.abundances[10]);
  EXPECT_EQ(1, window->survey.abundances[12]);
  EXPECT_EQ(path, window->survey.filename);
  EXPECT_EQ("", window->survey.file_etag);
}

TEST_F(OpenSurvey, ShowsTheConfirmationPageAndIsUnchanged)
{
  open(SurveyFile());
  EXPECT_EQ(window->confirm_panel->page, window->notebook->get_current_page());
  EXPECT_FALSE(window->file_needs_saving());
  EXPECT_TRUE(window->survey.survey_complete);
  window->survey_panel2->bottom_temp->set_text("51");
  EXPECT_TRUE(window->file_needs_saving());
}

TEST_F(OpenSurvey, ExpandsAndLabelsMarkedSpecies)
{
  open(SurveyFile());
  const auto& columns = window->species_columns;
  std::string seen;
  window->listed_model->foreach_iter([&](const Gtk::TreeIter& iter) {
    if (iter->get_value(columns.col_abundance) > 0)
      seen += std::to_string(iter->get_value(columns.col_id)) + "=" +
              iter->get_value(columns.col_abundance_label) + " ";
    return false;
  });
  EXPECT_EQ("10=Few (2-10) ", seen);
  EXPECT_TRUE(window->listed_panel->species_tree->row_expanded(Gtk::TreePath("0")));
  EXPECT_EQ(0, window->survey.abundances.at(11)); // every row has an entry now
}

TEST_F(OpenSurvey, RecognisesAnUploadedSurveyByAnySpellingOfItsPath)
{
  const std::string link = application_dir.root + "/link";
  const std::string path = put(SurveyFile().text(), MyApp::WD_UPLOADED);
  fs::create_directory_symlink(my_app->survey_root, link);
  fs::create_symlink(path, path_of(MyApp::WD_IN_PROGRESS, "link"));
  for (const std::string& spelling :
       {link + "/Uploaded/saved.MAVO-Survey", link + "/In Progress/../Uploaded/saved.MAVO-Survey",
        my_app->survey_root + "/./Uploaded/saved.MAVO-Survey",
        path_of(MyApp::WD_IN_PROGRESS, "link")}) {
    open(spelling);
    EXPECT_TRUE(window->survey.is_uploaded) << spelling;
    EXPECT_EQ(spelling, window->survey.filename) << "as it was chosen";
  }
  const std::string neighbour = my_app->survey_root + "/Uploaded2/saved.MAVO-Survey";
  write_file(neighbour, SurveyFile().text());
  open(neighbour);
  EXPECT_TRUE(window->survey.is_uploaded) << "only the beginning of the path counts";
  put(SurveyFile().text());
  open(link + "/Uploaded/../In Progress/saved.MAVO-Survey");
  EXPECT_FALSE(window->survey.is_uploaded);
}

TEST_F(OpenSurvey, SavesToTheSameFileForAnySpellingOfItsPath)
{
  const std::string link = application_dir.root + "/link";
  const std::string path = put(SurveyFile().text(), MyApp::WD_IN_PROGRESS, natural_name);
  fs::create_directory_symlink(my_app->survey_root, link);
  for (const std::string& spelling : {link + "/In Progress/", link + "/Uploaded/../In Progress/"}) {
    my_app->get_survey_dir(MyApp::WD_UPLOADED);
    open(spelling + natural_name + ".MAVO-Survey");
    window->survey_panel2->bottom_time->set_text("45");
    save_quietly(*window, MyApp::WD_IN_PROGRESS);
    EXPECT_EQ(std::vector<std::string>{natural_name + ".MAVO-Survey"},
              names_in(MyApp::WD_IN_PROGRESS));
    EXPECT_EQ(window->survey.xml_current.raw(), read_file(path));
  }
  open(link + "/In Progress/" + natural_name + ".MAVO-Survey");
  save_quietly(*window, MyApp::WD_READY_TO_UPLOAD);
  EXPECT_FALSE(file_exists(path)) << "it has changed its state";
}

TEST_F(OpenSurvey, ReplacesAnOlderRootTagByTheNewOne)
{
  const std::string path =
      put(SurveyFile().as("MAVO_Fish_Survey", "0.2").text(), MyApp::WD_IN_PROGRESS, natural_name);
  open(path);
  save_quietly(*window, MyApp::WD_IN_PROGRESS);
  EXPECT_NE(std::string::npos, read_file(path).find("<MAVO-Survey version=\"1.0\""));
}

TEST_F(OpenSurvey, AcceptsVersionsFromTheOldestToTheNextMajor)
{
  for (const char* version : {"0.2", "0.9", "1.0", "1.7", "1.9"}) {
    SCOPED_TRACE(version);
    open(SurveyFile().as("MAVO-Survey", version));
  }
}

TEST_F(OpenSurvey, ExplainsWhyItCannotReadAFile)
{
  const std::string in_root = "<MAVO-Survey version=\"1.0\">";
  const struct {
    std::string text;
    const char* expected;
  } cases[] = {
      {SurveyFile().as("Other", "1.0").text(), "Not a valid saved MAVO Survey"},
      {SurveyFile().as("MAVO-Survey", "1").text(), "Not a valid saved MAVO Survey (bad version)"},
      {SurveyFile().as("MAVO-Survey", "0.1").text(),
       "Valid saved MAVO Survey, but too old - contact support@mavo.example for help"},
      {SurveyFile().as("MAVO-Survey", "2.0").text(),
       "Valid saved MAVO Survey, but you need a newer version of this program to open it"},
      {in_root + "</MAVO-Survey>", "MAVO Survey missing top level children"},
      {in_root + "<a/><b/></MAVO-Survey>", "MAVO Survey has too many top level children (a, b)"},
      {in_root + "<a/></MAVO-Survey>", "MAVO Survey has a problem - missing 'survey' tag"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(c.expected, failure_of(c.text));
}

TEST_F(OpenSurvey, NamesTheWrongElement)
{
  const SurveyFile good;
  const struct {
    SurveyFile file;
    const char* expected;
  } cases[] = {
      {good.with("year", "<Year>2021</Year>"), "MAVO Survey has unknown tag 'Year'"},
      {good.with("year", "<!-- 2021 -->"), "MAVO Survey has unknown tag 'comment'"},
      {good.with("year", "2021"), "MAVO Survey has unknown tag 'text'"},
      {good.with("ids", "<ids><fish/></ids>"),
       "MAVO Survey has a problem - unknown tag \"fish\" in ids section"},
      {good.with("ids", "<ids><species id=\"0\" abun=\"1\"/></ids>"),
       "MAVO Survey has invalid id (0) or abundance (1) for species"},
      {good.with("ids", "<ids><species id=\"10\" abun=\"x\"/></ids>"),
       "MAVO Survey has invalid id (10) or abundance (0) for species"},
      {good.with("ids", "<ids><species id=\"10\"/></ids>"),
       "MAVO Survey has invalid id (10) or abundance (0) for species"},
      {good.with("ids", "<ids><species id=\"-4\" abun=\"-1\"/></ids>"),
       "MAVO Survey has invalid id (-4) or abundance (-1) for species"},
      {good.with("subregion", "<subregion>XYZ</subregion>"),
       "MAVO Survey is from a location that your data files do not know (XYZ); please check for "
       "updates of the data files"},
      {good.with("subregion", "<subregion></subregion>"), "MAVO Survey names no location"},
      {good.with("subregion",
                 "<ids><species id=\"10\" abun=\"1\"/></ids><subregion>PNW</subregion>"),
       "MAVO Survey has species in front of its location"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(c.expected, failure_of(c.file.text()));
}

TEST_F(OpenSurvey, ReportsAFileThatIsNotXmlOrMissing)
{
  EXPECT_NE("", failure_of("this is a note\n"));
  EXPECT_NE("", failure_of(""));
  EXPECT_NE("", failure_of(SurveyFile().text().substr(0, 300)));
  create_window();
  const SeenDialog seen = answer_next_dialog(
      Gtk::RESPONSE_OK, [&] { window->do_open(application_dir.root + "/no <such> & file"); });
  EXPECT_NE(std::string::npos, seen.text.raw().find("/no <such> & file: ")) << seen.text;
}

TEST_F(OpenSurvey, ReadsAZeroAbundanceAndDoesNotWriteIt)
{
  open(SurveyFile().with("ids", "<ids><species id=\"10\" abun=\"0\"/>"
                                "<species id=\"11\" abun=\"1\"/></ids>"));
  EXPECT_EQ(0, window->survey.abundances.at(10));
  EXPECT_EQ(std::string::npos, window->survey.xml_current.raw().find("id=\"0010\""));
  EXPECT_NE(std::string::npos, window->survey.xml_current.raw().find("id=\"0011\""));
}

TEST_F(OpenSurvey, KeepsTheLastOfARepeatedSpecies)
{
  open(SurveyFile().with("ids", "<ids><species id=\"10\" abun=\"1\"/>"
                                "<species id=\"10\" abun=\"2\"/></ids>"));
  EXPECT_EQ(2, window->survey.abundances.at(10));
}

TEST_F(OpenSurvey, DoesNotConfirmTheBottomTimeWithoutTheAttribute)
{
  open(SurveyFile().with("bottom_time", "<bottom_time>130</bottom_time>"));
  EXPECT_FALSE(window->confirm_panel->confirm_bottom_time->get_active());
  EXPECT_EQ("130", window->survey_panel2->bottom_time->get_text());
}

TEST_F(OpenSurvey, TreatsAnyUnitExceptCAsFahrenheit)
{
  const struct {
    const char* text;
    const char* expected;
  } cases[] = {{"C", "Celsius"}, {"F", "Fahrenheit"}, {"K", "Fahrenheit"}, {"", "Fahrenheit"}};
  for (const auto& c : cases) {
    open(SurveyFile().with("temp_units", std::string("<temp_units>") + c.text + "</temp_units>"));
    EXPECT_EQ(c.expected, window->survey_panel2->temp_units->get_label()) << c.text;
  }
}

TEST_F(OpenSurvey, TreatsTheSingleDepthOfOlderFilesAsTheMaximumInTheNorthwest)
{
  open(SurveyFile().with("avg_depth", "").with("max_depth", "<depth>3</depth>"));
  EXPECT_EQ("Deep", window->survey_panel2->max_depth->get_label());
  EXPECT_EQ(-1, window->survey_panel2->avg_depth->get_id());
}

TEST_F(OpenSurvey, TreatsTheSingleDepthOfOlderFilesAsTheAverageElsewhere)
{
  open(SurveyFile()
           .with("subregion", "<subregion>FLA</subregion>")
           .with("survey_subtype", "<survey_subtype>6</survey_subtype>")
           .with("avg_depth", "")
           .with("max_depth", "<depth>3</depth>")
           .with("ids", "<ids/>"));
  EXPECT_EQ("Deep", window->survey_panel2->avg_depth->get_label());
  EXPECT_EQ(-1, window->survey_panel2->max_depth->get_id());
}

TEST_F(OpenSurvey, ToleratesMissingElements)
{
  open(SurveyFile().with("year", "").with("habitat", "").with("ids", "").with("last_name", ""));
  EXPECT_EQ(0, window->survey_panel1->year->get_id());
  EXPECT_EQ(-1, window->survey_panel2->habitat->get_id());
  EXPECT_FALSE(window->file_needs_saving());
}

TEST_F(OpenSurvey, ReportsAYearThatIsNotInTheList)
{
  const DropDownBox& year = *window->survey_panel1->year;
  const std::string range = year.items.back().second + " to " + year.items.front().second;
  const struct {
    std::string element, shown;
  } cases[] = {
      {"9998", "9998"},
      {"1992", "1992"},
      {"&lt;b&gt;21 &amp; 22", "<b>21 & 22"},
      {std::string(60'000, '7'), std::string(20, '7') + "…"},
  };
  for (const auto& c : cases) {
    const std::string path =
        put(SurveyFile().with("year", "<year>" + c.element + "</year>").text());
    create_window();
    const SeenDialog seen = answer_next_dialog(
        Gtk::RESPONSE_OK, [&] { EXPECT_EQ(RET_SUCCESS, window->do_open(path)); });
    EXPECT_EQ("Year Not In The List", seen.title);
    EXPECT_EQ("The year of this survey, " + c.shown + ", is not in the list of years (" + range +
                  ").\nPlease check the date of this computer.\n\nThe survey is shown without a "
                  "year. Its file still has it.",
              seen.text);
    EXPECT_EQ(0, window->survey_panel1->year->get_id());
    EXPECT_EQ("June", window->survey_panel1->month->get_label());
    EXPECT_FALSE(window->file_needs_saving());
  }
}

TEST_F(OpenSurvey, ReportsAYearThatIsNotInTheListEvenIfTheListIsEmpty)
{
  const std::string path = put(SurveyFile().text());
  create_window();
  window->survey_panel1->year->init({}, 0); // as if the clock were in 1970
  const SeenDialog seen =
      answer_next_dialog(Gtk::RESPONSE_OK, [&] { EXPECT_EQ(RET_SUCCESS, window->do_open(path)); });
  EXPECT_EQ(0U, seen.text.find("The year of this survey, 2021, is not in the list of years.\n"))
      << seen.text;
}

TEST_F(OpenSurvey, DoesNotReportAYearThatWasNotChosen)
{
  for (const char* const element : {"<year>0000</year>", "<year/>", "<year> \n </year>", ""}) {
    SCOPED_TRACE(element);
    open(SurveyFile().with("year", element));
    save_quietly(*window, MyApp::WD_IN_PROGRESS);
    EXPECT_NE(std::string::npos, read_file(window->survey.filename).find("<year>0000</year>"));
  }
}

namespace {

// A survey of a year that is in the future by the clock of this computer.
class SurveyOfAnUnlistedYear : public OpenSurvey
{
public:
  void SetUp() override
  {
    OpenSurvey::SetUp();
    text = SurveyFile().with("year", "<year>9998</year>").text();
    path = put(text, in_progress, "1234-PNW-99980630-0900-31020003");
    create_window();
    answer_next_dialog(Gtk::RESPONSE_OK, [&] { EXPECT_EQ(RET_SUCCESS, window->do_open(path)); });
    window->survey_panel2->bottom_time->set_text("45");
  }

  // Saves and answers the question.
  RetCode save_and_answer(int response)
  {
    RetCode result = RET_FAILURE;
    const SeenDialog seen = answer_next_dialog(
        response, [&] { result = window->do_save(in_progress, SurveyWindow::SAVE_QUIET); });
    EXPECT_EQ("Save Survey Without Its Year?", seen.title);
    EXPECT_EQ("The year of this survey, 9998, is not in the list of years.\n"
              "It would be saved without a year.\n\n"
              "Click Save to save it without a year,\nor Cancel to leave its file as it is.",
              seen.text);
    EXPECT_EQ((std::vector<Glib::ustring>{"gtk-save", "gtk-cancel"}), seen.buttons);
    return result;
  }

  const MyApp::WhichDir in_progress = MyApp::WD_IN_PROGRESS;
  std::string text, path;
};

} // namespace

TEST_F(SurveyOfAnUnlistedYear, IsNotSavedIfTheUserRefuses)
{
  for (const int response : {int(Gtk::RESPONSE_CANCEL), int(Gtk::RESPONSE_DELETE_EVENT)}) {
    EXPECT_EQ(RET_DECLINED, save_and_answer(response));
    EXPECT_EQ(1U, names_in(in_progress).size());
    EXPECT_EQ(text, read_file(path));
    EXPECT_EQ(path, window->survey.filename);
    EXPECT_TRUE(window->file_needs_saving());
  }
}

TEST_F(SurveyOfAnUnlistedYear, IsSavedWithoutAYearIfTheUserAgreesAndAsksOnlyOnce)
{
  EXPECT_EQ(RET_SUCCESS, save_and_answer(Gtk::RESPONSE_ACCEPT));
  const std::string saved = read_file(path_of(in_progress, "1234-PNW-00000630-0900-31020003"));
  EXPECT_NE(std::string::npos, saved.find("<year>0000</year>"));
  EXPECT_EQ(text, read_file(path)) << "a survey of another name";
  expect_no_dialog([&] { save_quietly(*window, in_progress); });
}

TEST_F(SurveyOfAnUnlistedYear, IsSavedWithoutAQuestionIfAYearIsChosen)
{
  choose(*window->survey_panel1->year, "2021");
  expect_no_dialog([&] { save_quietly(*window, in_progress); });
  EXPECT_NE(std::string::npos, read_file(window->survey.filename).find("<year>2021</year>"));
}

TEST_F(SurveyOfAnUnlistedYear, StaysOpenIfTheUserRefusesToSaveItOnClosing)
{
  bool may_continue = true;
  const auto seen = answer_dialogs({Gtk::RESPONSE_ACCEPT, Gtk::RESPONSE_CANCEL}, [&] {
    may_continue = window->check_file_save_okay("closing this survey");
  });
  EXPECT_EQ(2U, seen.size());
  EXPECT_FALSE(may_continue);
  EXPECT_EQ(text, read_file(path));
}

TEST_F(OpenSurvey, ChoosesNothingThatTheDataDoNotOffer)
{
  open(SurveyFile()
           .with("year", "<year>0000</year>")
           .with("month", "<month>13</month>")
           .with("habitat", "<habitat>77</habitat>")
           .with("visibility", "<visibility>-1</visibility>")
           .with("species_view", "<species_view>4</species_view>"));
  EXPECT_EQ(0, window->survey_panel1->year->get_id());
  EXPECT_EQ(0, window->survey_panel1->month->get_id());
  EXPECT_EQ(-1, window->survey_panel2->habitat->get_id());
  EXPECT_EQ(-1, window->survey_panel2->visibility->get_id());
  EXPECT_EQ(1, window->listed_panel->species_view->get_id())
      << "the saved view belongs to another location";
}

TEST_F(OpenSurvey, ShowsAHiddenSurveyTypeAsNoLongerAvailable)
{
  open(SurveyFile().with("survey_subtype", "<survey_subtype>4</survey_subtype>"));
  EXPECT_EQ("Northwest: old form - No longer available",
            window->survey_panel1->survey_subtype->get_label());
  EXPECT_FALSE(window->survey.survey_complete);
}

TEST_F(OpenSurvey, KeepsAndWritesSpeciesThatTheDataLack)
{
  open(SurveyFile().with("ids", "<ids><species id=\"0013\" abun=\"1\"/>"
                                "<species id=\"7777777\" abun=\"2\"/></ids>"));
  save_quietly(*window, MyApp::WD_IN_PROGRESS);
  const std::string saved = read_file(window->survey.filename);
  EXPECT_NE(std::string::npos, saved.find("<species id=\"0013\" abun=\"1\" resp=\"301\"/>"));
  EXPECT_NE(std::string::npos, saved.find("<species id=\"7777777\" abun=\"2\" resp=\"302\"/>"));
}

TEST_F(OpenSurvey, KeepsTheSpeciesOfASurveyWhoseTypeTheDataLack)
{
  open(SurveyFile().with("survey_subtype", "<survey_subtype>55</survey_subtype>"));
  EXPECT_EQ(-1, window->survey_panel1->survey_subtype->get_id());
  EXPECT_EQ(2, window->survey.abundances.at(10));
  EXPECT_EQ(1, window->survey.abundances.at(12));
  choose_survey_type("Northwest: abundance");
  save_quietly(*window, MyApp::WD_IN_PROGRESS);
  EXPECT_NE(std::string::npos,
            read_file(window->survey.filename).find("<species id=\"0012\" abun=\"1\""));
}

TEST_F(OpenSurvey, MakesAnUploadedSurveyReadOnly)
{
  open(put(SurveyFile().text(), MyApp::WD_UPLOADED));
  EXPECT_TRUE(window->survey.is_uploaded);
  EXPECT_TRUE(window->survey.survey_complete);
  const std::vector<Gtk::Widget*> insensitive{window->save_button,
                                              window->ready_button,
                                              window->upload_button,
                                              window->member_panel->member_id,
                                              window->member_panel->last_name,
                                              window->survey_panel1->subregion,
                                              window->survey_panel1->zonecode,
                                              window->survey_panel2->bottom_time,
                                              window->survey_panel2->habitat,
                                              window->confirm_panel->confirm_bottom_time};
  for (auto* widget : insensitive)
    EXPECT_FALSE(widget->get_sensitive()) << widget->get_name();
  EXPECT_TRUE(window->survey_panel1->zone_search->get_sensitive());
  EXPECT_TRUE(window->survey_panel1->geog_tree->get_sensitive());
  EXPECT_TRUE(window->survey_panel2->habitat_descr->get_sensitive());
}

TEST_F(OpenSurvey, KeepsSurveysOfTheOtherStatesEditable)
{
  for (const auto which : {MyApp::WD_IN_PROGRESS, MyApp::WD_READY_TO_UPLOAD}) {
    open(put(SurveyFile().text(), which));
    EXPECT_FALSE(window->survey.is_uploaded);
    EXPECT_TRUE(window->save_button->get_sensitive());
    EXPECT_TRUE(window->ready_button->get_sensitive());
  }
}

TEST_F(OpenSurvey, CannotSaveAnUploadedSurveyAndDiscardsItByNo)
{
  open(put(SurveyFile().text(), MyApp::WD_UPLOADED));
  choose(*window->listed_panel->species_view, "Common");
  bool may_go = true;
  const auto seen = answer_dialogs({Gtk::RESPONSE_ACCEPT, Gtk::RESPONSE_OK},
                                   [&] { may_go = window->check_file_save_okay("closing"); });
  EXPECT_FALSE(may_go);
  EXPECT_EQ("This survey was already uploaded and cannot be changed offline.", seen[1].text);
  answer_next_dialog(Gtk::RESPONSE_NO, [&] { may_go = window->check_file_save_okay("closing"); });
  EXPECT_TRUE(may_go);
}

// --- the dialog ---

namespace {

// Answers the file dialog with a chosen file.
void choose_file(Gtk::Dialog& dialog, const std::string& path)
{
  auto& chooser = dynamic_cast<Gtk::FileChooserDialog&>(dialog);
  chooser.set_filename(path);
  while (chooser.get_filename() != path)
    settle();
  chooser.response(Gtk::RESPONSE_OK);
}

} // namespace

TEST_F(OpenSurvey, OpensTheChosenFileInANewWindow)
{
  const std::string path = put(SurveyFile().text());
  SurveyWindow* const old = window;
  RetCode result = RET_FAILURE;
  meet_next_dialog([&](Gtk::Dialog& dialog) { choose_file(dialog, path); },
                   [&] { result = old->select_and_open_saved_survey(); });
  EXPECT_EQ(RET_SUCCESS, result);
  ASSERT_EQ(1U, visible_windows().size());
  EXPECT_NE(old, visible_windows().front());
  EXPECT_EQ(path, visible_windows().front()->survey.filename);
}

TEST_F(OpenSurvey, OffersSurveysWithBothExtensionsInTheDialog)
{
  meet_next_dialog(
      [&](Gtk::Dialog& dialog) {
        auto& chooser = dynamic_cast<Gtk::FileChooserDialog&>(dialog);
        EXPECT_EQ("Open saved survey", chooser.get_title());
        EXPECT_TRUE(chooser.get_local_only());
        ASSERT_EQ(1U, chooser.list_filters().size());
        const auto filter = chooser.list_filters().front();
        EXPECT_EQ("MAVO survey files", filter->get_name());
        for (const char* name : {"a.MAVO-Survey", "a.MAVO_survey"}) {
          const GtkFileFilterInfo info{GTK_FILE_FILTER_DISPLAY_NAME, name, nullptr, name, nullptr};
          EXPECT_TRUE(gtk_file_filter_filter(filter->gobj(), &info)) << name;
        }
        EXPECT_TRUE(dynamic_cast<Gtk::Label*>(chooser.get_extra_widget()));
        chooser.response(Gtk::RESPONSE_CANCEL);
      },
      [&] { EXPECT_EQ(RET_DECLINED, window->select_and_open_saved_survey()); });
  EXPECT_TRUE(window->get_visible());
}

TEST_F(OpenSurvey, ChangesNothingWhenTheQuestionIsCancelled)
{
  enter_survey();
  answer_next_dialog(Gtk::RESPONSE_CANCEL,
                     [&] { EXPECT_EQ(RET_DECLINED, window->select_and_open_saved_survey()); });
  EXPECT_TRUE(window->get_visible());
  EXPECT_EQ("1234", window->member_panel->get_member_id());
}

TEST_F(OpenSurvey, DescribesOnlySurveysInThePreview)
{
  const std::string survey_path = put(SurveyFile().text());
  const std::string note_path = put("a note", MyApp::WD_IN_PROGRESS, "note");
  meet_next_dialog(
      [&](Gtk::Dialog& dialog) {
        auto& chooser = dynamic_cast<Gtk::FileChooserDialog&>(dialog);
        auto& label = dynamic_cast<Gtk::Label&>(*chooser.get_extra_widget());
        for (const auto& path : {survey_path, note_path}) {
          // When the chooser has read the folder, it may select the first file instead of this
          // one.
          wait_until("the file is chosen", [&] {
            if (chooser.get_filename() != path)
              chooser.set_filename(path);
            return chooser.get_preview_filename() == path;
          });
          window->on_filedlg_update_preview(&chooser, &label);
          EXPECT_EQ(path == survey_path, label.get_visible()) << path;
        }
        EXPECT_EQ("Member 1234 - Northwest: fish and invertebrates - 2021-06-30 at 9 AM - Rosario "
                  "Wall",
                  label.get_text());
        chooser.response(Gtk::RESPONSE_CANCEL);
      },
      [&] { window->select_and_open_saved_survey(); });
}

TEST_F(OpenSurvey, LeavesNoHiddenWindowThatKeepsTheProgramAlive)
{
  const std::string path = put("not a survey");
  const auto windows_before = my_app->app->get_windows().size();
  window->start_panel->build_survey_model();
  window->start_panel->survey_tree->set_cursor(Gtk::TreePath("0:0"));
  answer_next_dialog(Gtk::RESPONSE_OK, [&] { window->start_panel->on_edit_view_button(); });
  EXPECT_EQ(windows_before, my_app->app->get_windows().size());
  EXPECT_TRUE(window->get_visible());
  window->hide();
  settle();
  EXPECT_EQ(windows_before - 1, my_app->app->get_windows().size());
}
