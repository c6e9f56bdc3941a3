#include "core/version.h"
#include "support/dialogs.h"
#include "support/keys.h"
#include "support/main-loop.h"
#include "support/output.h"
#include "support/window-fixture.h"
#include "ui/confirm-panel.h"
#include "ui/listed-panel.h"
#include "ui/member-panel.h"
#include "ui/start-panel.h"
#include "ui/survey-panel1.h"
#include "ui/survey-panel2.h"
#include "ui/survey-window.h"
#include "ui/unlisted-panel.h"

#include <gdkmm/pixbuf.h>
#include <gtkmm/application.h>

namespace {

class SurveyWindowTest : public WindowTest
{
public:
  // Does what a click on the frame's close button does.
  void close_by_frame() const
  {
    GdkEvent* event = gdk_event_new(GDK_DELETE);
    event->any.window = GDK_WINDOW(g_object_ref(window->get_window()->gobj()));
    event->any.send_event = TRUE;
    gtk_main_do_event(event);
    gdk_event_free(event);
    settle();
  }
};

} // namespace

TEST_F(SurveyWindowTest, IsCreatedHidden)
{
  create_window();
  EXPECT_FALSE(window->get_visible());
  EXPECT_EQ(my_app, window->my_app);
}

TEST_F(SurveyWindowTest, HasSevenScrolledPanelsInOrder)
{
  create_window();
  const struct {
    const Gtk::Widget* panel;
    int page;
    const char* tab;
  } expected[] = {
      {window->start_panel, window->start_panel->page, "Start/Open Survey"},
      {window->member_panel, window->member_panel->page, "Member Info"},
      {window->survey_panel1, window->survey_panel1->page, "Survey Info Part 1"},
      {window->survey_panel2, window->survey_panel2->page, "Survey Info Part 2"},
      {window->listed_panel, window->listed_panel->page, "Listed Species"},
      {window->unlisted_panel, window->unlisted_panel->page, "Unlisted Species"},
      {window->confirm_panel, window->confirm_panel->page, "Confirmation"},
  };
  ASSERT_EQ(7, window->notebook->get_n_pages()) << "without the page of the definition file";
  for (int i = 0; i < 7; ++i) {
    auto* page = window->notebook->get_nth_page(i);
    EXPECT_EQ(i, expected[i].page) << expected[i].tab;
    EXPECT_EQ(expected[i].tab, window->notebook->get_tab_label_text(*page));
    EXPECT_NE(nullptr, dynamic_cast<Gtk::ScrolledWindow*>(page)) << expected[i].tab;
    EXPECT_TRUE(page->get_visible()) << expected[i].tab;
    EXPECT_TRUE(expected[i].panel->is_ancestor(*page)) << expected[i].tab;
  }
}

TEST_F(SurveyWindowTest, LaysOutOnlyPagesThatTheUserHasSeen)
{
  open_window();
  const auto laid_out = [this] {
    std::string pages;
    for (const auto* const panel : std::initializer_list<const Gtk::Widget*>{
             window->start_panel, window->member_panel, window->survey_panel1,
             window->survey_panel2, window->listed_panel, window->unlisted_panel,
             window->confirm_panel})
      pages += panel->is_visible() ? "x" : "-"; // including its parents
    return pages;
  };
  EXPECT_EQ("x------", laid_out());
  window->notebook->set_current_page(window->listed_panel->page);
  EXPECT_EQ("x---x--", laid_out());
  press(*window->next_button);
  EXPECT_EQ("x---xx-", laid_out());
  window->notebook->set_current_page(0);
  EXPECT_EQ("x---xx-", laid_out()) << "a page remains laid out";
}

TEST_F(SurveyWindowTest, KeepsItsSizeOnEveryPage)
{
  open_window();
  for (int page = 6; page >= 0; --page) {
    window->notebook->set_current_page(page);
    settle();
    EXPECT_EQ(900, window->get_allocated_width()) << page;
    EXPECT_EQ(600, window->get_allocated_height()) << page;
  }
}

TEST_F(SurveyWindowTest, StartsOnTheFirstPageWithTheNewSurveyButton)
{
  open_window();
  EXPECT_EQ(0, window->notebook->get_current_page());
  EXPECT_EQ(window->start_panel->new_survey_button, window->get_focus());
  int width = 0;
  int height = 0;
  window->get_size(width, height);
  EXPECT_EQ(900, width);
  EXPECT_EQ(600, height);
}

TEST_F(SurveyWindowTest, OffersOnlyNextAtStart)
{
  create_window();
  EXPECT_FALSE(window->save_button->get_sensitive());
  EXPECT_FALSE(window->ready_button->get_sensitive());
  EXPECT_FALSE(window->upload_button->get_sensitive());
  EXPECT_FALSE(window->back_button->get_sensitive());
  EXPECT_TRUE(window->next_button->get_sensitive());
}

TEST_F(SurveyWindowTest, OffersSavingWhenASubregionIsChosen)
{
  open_window();
  choose_subregion("Northwest");
  EXPECT_TRUE(window->save_button->get_sensitive());
  EXPECT_FALSE(window->ready_button->get_sensitive());
  EXPECT_FALSE(window->upload_button->get_sensitive());
}

TEST_F(SurveyWindowTest, WalksThroughAllPagesByNextAndBack)
{
  open_window();
  for (int page = 0; page < 6; ++page) {
    EXPECT_EQ(page != 0, window->back_button->get_sensitive()) << page;
    press(*window->next_button);
    EXPECT_EQ(page + 1, window->notebook->get_current_page());
  }
  EXPECT_FALSE(window->next_button->get_sensitive());
  for (int page = 6; page > 0; --page) {
    EXPECT_EQ(page != 6, window->next_button->get_sensitive()) << page;
    press(*window->back_button);
    EXPECT_EQ(page - 1, window->notebook->get_current_page());
  }
  EXPECT_FALSE(window->back_button->get_sensitive());
}

TEST_F(SurveyWindowTest, AllowsEveryPageWithoutAnyEntry)
{
  open_window();
  for (const int page : {6, 0, 4, 2, 5, 1, 3}) {
    go_to_page(page);
    EXPECT_EQ(page, window->notebook->get_current_page());
    EXPECT_EQ(page != 0, window->back_button->get_sensitive()) << page;
    EXPECT_EQ(page != 6, window->next_button->get_sensitive()) << page;
  }
}

TEST_F(SurveyWindowTest, IsTitledByDateStartAndSite)
{
  open_window();
  const std::string program = window->base_title;
  EXPECT_FALSE(program.empty());
  EXPECT_EQ(program, window->get_title().raw());

  auto& panel = *window->survey_panel1;
  choose(*panel.month, "January");
  choose(*panel.mday, "2");
  choose(*panel.year, "2021");
  EXPECT_EQ("2021-01-02 - " + program, window->get_title().raw());
  choose(*panel.dive_start, "9 AM");
  EXPECT_EQ("2021-01-02 9 AM - " + program, window->get_title().raw());
  choose_subregion("Northwest");
  choose_survey_type("Northwest: abundance");
  panel.zonecode->set_text("31020003");
  settle();
  EXPECT_EQ("2021-01-02 9 AM - Washington, San Juan Islands, Rosario Wall - " + program,
            window->get_title().raw());
}

TEST_F(SurveyWindowTest, ShowsABarIfTheSurveyHasBeenUploaded)
{
  open_window();
  auto* const bar = find_widget(*window, "uploaded_bar");
  ASSERT_NE(nullptr, bar);
  EXPECT_FALSE(bar->get_visible());
  window->set_survey_is_uploaded();
  settle();
  ASSERT_TRUE(bar->get_mapped());
  EXPECT_EQ("This survey has been uploaded. You can look at it, but not change it.",
            bar->get_accessible()->get_description());

  for (int page = 0; page < window->notebook->get_n_pages(); ++page) {
    go_to_page(page);
    let_draw(*window);
    const int lower_edge = bar->get_allocation().get_y() + bar->get_allocated_height();
    EXPECT_GT(bar->get_allocated_height(), 20) << page;
    EXPECT_LE(lower_edge, window->notebook->get_allocation().get_y()) << page;
  }
}

TEST_F(SurveyWindowTest, HasOnlyIconsThatCouldBeLoaded)
{
  create_window();
  const auto loaded = MyApp::icon_list;
  ASSERT_EQ(5U, loaded.size());
  MyApp::icon_list.emplace_back(); // the entry of a missing file
  create_window();
  MyApp::icon_list = loaded;
  for (const Gtk::Window* toplevel :
       {static_cast<Gtk::Window*>(window), static_cast<Gtk::Window*>(window->contact_dialog),
        static_cast<Gtk::Window*>(window->instructions_dialog),
        static_cast<Gtk::Window*>(window->about_dialog)})
    EXPECT_EQ(5U, toplevel->get_icon_list().size()) << toplevel->get_title();
}

TEST_F(SurveyWindowTest, IsUnchangedWhenItIsNew)
{
  create_window();
  EXPECT_FALSE(window->survey.xml_current.empty());
  EXPECT_EQ(window->survey.xml_current.raw(), window->survey.xml_pristine.raw());
  EXPECT_EQ(window->survey.xml_current.raw(), window->survey.xml_last_saved.raw());
  EXPECT_FALSE(window->file_needs_saving());
}

TEST_F(SurveyWindowTest, ClosesWithoutAQuestionWhileUnchanged)
{
  open_window();
  expect_no_dialog([&] { close_by_frame(); });
  EXPECT_FALSE(window->get_visible());
  EXPECT_TRUE(my_app->app->get_windows().empty()) << "which ends the program";
}

TEST_F(SurveyWindowTest, ClosesWithoutAQuestionIfOnlyTheMemberWasEntered)
{
  open_window();
  window->member_panel->member_id->set_text("1234");
  window->member_panel->last_name->set_text("Marsh");
  expect_no_dialog([&] { close_by_frame(); });
  EXPECT_FALSE(window->get_visible());
}

TEST_F(SurveyWindowTest, AsksBeforeAChangedSurveyIsClosed)
{
  open_window();
  choose_subregion("Northwest");
  const auto seen = answer_next_dialog(Gtk::RESPONSE_CANCEL, [&] { close_by_frame(); });
  EXPECT_EQ("Survey Not Saved Yet!", seen.title);
  EXPECT_PRED_FORMAT2(testing::IsSubstring, "Save it before closing this survey?", seen.text.raw());
  EXPECT_TRUE(window->get_visible());
  answer_next_dialog(Gtk::RESPONSE_DELETE_EVENT, [&] { close_by_frame(); });
  EXPECT_TRUE(window->get_visible()) << "closing the question does not answer it";
  answer_next_dialog(Gtk::RESPONSE_NO, [&] { close_by_frame(); });
  EXPECT_FALSE(window->get_visible());
}

TEST_F(SurveyWindowTest, StaysOpenOnlyIfTheUserCancels)
{
  open_window();
  EXPECT_FALSE(window->on_delete_event(nullptr)) << "nothing to lose";
  choose_subregion("Northwest");
  answer_next_dialog(Gtk::RESPONSE_CANCEL, [&] { EXPECT_TRUE(window->on_delete_event(nullptr)); });
  answer_next_dialog(Gtk::RESPONSE_NO, [&] { EXPECT_FALSE(window->on_delete_event(nullptr)); });
}

TEST_F(SurveyWindowTest, SavesFromItsButton)
{
  open_window();
  choose_subregion("Northwest");
  const auto seen = answer_next_dialog(Gtk::RESPONSE_OK, [&] { press(*window->save_button); });
  EXPECT_EQ("Survey Saved", seen.title);
  EXPECT_EQ(4U, seen.buttons.size()) << "OK and what to do next";
  EXPECT_EQ(my_app->get_survey_dir(MyApp::WD_IN_PROGRESS) + "/PNW-00000000-0000.MAVO-Survey",
            window->survey.filename);
}

TEST_F(SurveyWindowTest, MarksAsReadyFromItsButton)
{
  open_window();
  choose_subregion("Northwest");
  window->ready_button->set_sensitive(true); // as in a complete survey
  answer_next_dialog(Gtk::RESPONSE_OK, [&] { press(*window->ready_button); });
  EXPECT_EQ(my_app->get_survey_dir(MyApp::WD_READY_TO_UPLOAD) + "/PNW-00000000-0000.MAVO-Survey",
            window->survey.filename);
}

TEST_F(SurveyWindowTest, HidesThePartsOfLaterPagesThatAreEmpty)
{
  create_window();
  const auto& unlisted = *window->unlisted_panel;
  EXPECT_FALSE(unlisted.selected_species_box->get_visible());
  EXPECT_FALSE(unlisted.found_species_box->get_visible());
  EXPECT_FALSE(unlisted.found_species_heading->get_visible());
  EXPECT_FALSE(unlisted.no_found_species_heading->get_visible());
  EXPECT_EQ("Common Name", unlisted.species_search_by->get_label());
  EXPECT_FALSE(window->confirm_panel->conf_listed_box->get_visible());
  EXPECT_FALSE(window->confirm_panel->conf_unlisted_box->get_visible());
}

TEST_F(SurveyWindowTest, SelectsNoSavedSurveyAtStart)
{
  create_window();
  auto& start = *window->start_panel;
  MyApp::WhichDir which = MyApp::WD_UPLOADED;
  EXPECT_EQ("", start.lookup_selected_survey(&which));
  EXPECT_EQ(MyApp::WD_NOT_A_SURVEY, which);
  EXPECT_EQ("", start.lookup_selected_survey(nullptr));
  EXPECT_EQ("Edit", start.edit_view_button->get_label());
  EXPECT_EQ("Mark For Upload", start.mark_button->get_label());
  EXPECT_FALSE(start.mark_button->get_visible());
  for (const auto* button :
       {start.edit_view_button, start.mark_button, start.upload_button, start.delete_button})
    EXPECT_FALSE(button->get_sensitive()) << button->get_label();
}

TEST_F(SurveyWindowTest, TurnsThePageByKeysFromEverywhere)
{
  open_window();
  choose_subregion("Northwest");
  choose_survey_type("Northwest: abundance");
  Gtk::Widget* const places[] = {window->survey_panel1->geog_tree, window->survey_panel1->zonecode,
                                 window->listed_panel->species_tree, window->next_button};
  for (auto* place : places) {
    const bool is_zone = place == places[0] || place == places[1];
    const int page = is_zone ? window->survey_panel1->page : window->listed_panel->page;
    for (const auto& [key, step] : {std::pair{GDK_KEY_Page_Down, 1}, {GDK_KEY_KP_Page_Up, -1}}) {
      go_to_page(page);
      place->grab_focus();
      press_key(*window, static_cast<guint>(key), GDK_CONTROL_MASK);
      EXPECT_EQ(page + step, window->notebook->get_current_page());
      EXPECT_NE(nullptr, window->get_focus());
    }
  }
}

TEST_F(SurveyWindowTest, TurnsThePageByKeysWhileANameIsTyped)
{
  open_window();
  choose_subregion("Northwest");
  choose_survey_type("Northwest: abundance");
  go_to_page(window->listed_panel->page);
  window->listed_panel->species_tree->grab_focus();
  settle();
  type_text(*window, "ling");
  press_key(*window, GDK_KEY_Page_Down, GDK_CONTROL_MASK);
  EXPECT_EQ(window->unlisted_panel->page, window->notebook->get_current_page());
  EXPECT_EQ(window->unlisted_panel->species_search, window->get_focus());
}

TEST_F(SurveyWindowTest, StaysOnTheLastPageAndTheFirstOne)
{
  open_window();
  press_key(*window, GDK_KEY_Page_Up, GDK_CONTROL_MASK);
  EXPECT_EQ(0, window->notebook->get_current_page());
  go_to_page(window->confirm_panel->page);
  press_key(*window, GDK_KEY_Page_Down, GDK_CONTROL_MASK);
  EXPECT_EQ(window->confirm_panel->page, window->notebook->get_current_page());
}
