// Simulates a process that runs for days and starts and opens survey after survey. Old windows
// are kept and hidden. They must not cost anything except memory.
#include "store/saving-test.h"
#include "support/main-loop.h"
#include "support/memory.h"
#include "support/output.h"
#include "ui/listed-panel.h"
#include "ui/start-panel.h"
#include "ui/survey-panel1.h"
#include "ui/survey-panel2.h"
#include "ui/survey-window.h"
#include "ui/unlisted-panel.h"

#include <gtkmm/application.h>

#include <cstdlib>

namespace {

// A cycle leaves two windows of 4 to 5 MB each. 3.2 MB are for the widgets of an empty survey, and
// the rest is for the contents. Both take 8,900 to 9,300 kB. The limit allows half as much more for
// other fonts, themes and data.
constexpr long most_kb_per_cycle = 14'000;

int cycles_to_try()
{
  const char* const requested = std::getenv("MAVO_LONG_USE_CYCLES");
  return requested ? std::atoi(requested) : 30;
}

class LongUse : public SavingTest
{
public:
  // Opens a saved survey of the first location.
  void SetUp() override
  {
    application_dir.use_shipped_data();
    SavingTest::SetUp();
    type_member("1234", "Smith");
    window->survey_panel1->subregion->set_active(0);
    settle();
    save_quietly(*window, MyApp::WD_IN_PROGRESS);
    path = window->survey.filename;
  }

  void start_new_survey()
  {
    ASSERT_FALSE(window->file_needs_saving());
    window->on_action_FileNew("FileNew");
    use_new_window();
  }

  void open_saved_survey()
  {
    ASSERT_FALSE(window->file_needs_saving());
    go_to_page(0);
    StartPanel& panel = *window->start_panel;
    panel.store->foreach_iter([&](const Gtk::TreeIter& row) {
      const bool found = row->get_value(panel.columns.path) == path;
      if (found)
        panel.survey_tree->set_cursor(panel.store->get_path(row));
      return found;
    });
    ASSERT_EQ(path, panel.lookup_selected_survey(nullptr));
    panel.on_edit_view_button();
    use_new_window();
  }

  void run_cycle()
  {
    ASSERT_NO_FATAL_FAILURE(start_new_survey());
    ASSERT_NO_FATAL_FAILURE(open_saved_survey());
  }

  // Expects that a new window is the only one in the application's list. Continues with it.
  void use_new_window()
  {
    settle();
    const auto windows = my_app->app->get_windows();
    ASSERT_EQ(1U, windows.size());
    ASSERT_NE(window, windows.front());
    window = dynamic_cast<SurveyWindow*>(windows.front());
  }

  // Visits every page and does what changes the store and the lists of species.
  void use_window()
  {
    for (int page = 0; page < window->notebook->get_n_pages(); ++page)
      go_to_page(page);
    window->survey_panel2->bottom_time->set_text("45");
    window->survey_panel1->survey_subtype->set_active(0);
    settle();
    save_quietly(*window, MyApp::WD_IN_PROGRESS);
  }

  // Counts the changes of all lists of a window.
  void watch(SurveyWindow& watched)
  {
    const auto count = [this] { ++changes; };
    for (const Glib::RefPtr<Gtk::TreeStore>& model :
         {watched.listed_model, watched.unlisted_model, watched.start_panel->store}) {
      model->signal_row_changed().connect(sigc::hide(sigc::hide(sigc::slot<void>(count))));
      model->signal_row_inserted().connect(sigc::hide(sigc::hide(sigc::slot<void>(count))));
      model->signal_row_deleted().connect(sigc::hide(sigc::slot<void>(count)));
    }
    watched.notebook->signal_switch_page().connect(sigc::hide(sigc::hide(sigc::slot<void>(count))));
    watched.property_title().signal_changed().connect(count);
  }

  std::string path; // the path of the saved survey
  int changes = 0;
};

} // namespace

TEST_F(LongUse, GrowsByTheSameBoundedAmountWithEachSurvey)
{
  const int cycles = cycles_to_try() / 3;
  const auto kb_per_cycle = [this, cycles] {
    const long before = memory_now_kb();
    for (int i = 0; i < cycles; ++i)
      run_cycle();
    return (memory_now_kb() - before) / cycles;
  };
  kb_per_cycle(); // fills caches
  const long first = kb_per_cycle();
  const long last = kb_per_cycle();
  EXPECT_LT(first, most_kb_per_cycle);
  EXPECT_LT(last, first + first / 4) << "each cycle needs more than the one before";
  RecordProperty("tried", 3 * cycles);
  RecordProperty("kb_per_cycle", std::to_string(last));
}

TEST_F(LongUse, DoesNotUpdateHiddenWindows)
{
  ASSERT_NO_FATAL_FAILURE(open_saved_survey());
  use_window();
  ASSERT_NO_FATAL_FAILURE(open_saved_survey());
  const std::string alone = output_of(4, [this] { use_window(); });
  EXPECT_NE("", alone);

  constexpr int old_windows = 10;
  for (int i = 0; i < old_windows; ++i) {
    watch(*window);
    if (i % 2 == 0)
      start_new_survey();
    else
      open_saved_survey();
  }
  changes = 0;
  EXPECT_EQ(alone, output_of(4, [this] { use_window(); }));
  EXPECT_EQ(0, changes);

  watch(*window); // checks that the watch sees changes of a visible window
  use_window();
  EXPECT_GT(changes, 0);
  RecordProperty("tried", old_windows);
}
