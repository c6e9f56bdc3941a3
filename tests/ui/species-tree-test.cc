#include "support/main-loop.h"
#include "support/output.h"
#include "ui/listed-panel.h"
#include "ui/species-tree.h"
#include "ui/species-window.h"
#include "ui/survey-window.h"

#include <gtk/gtk.h>
#include <gtkmm/entry.h>

namespace {

constexpr unsigned int left = 1;
constexpr unsigned int middle = 2;
constexpr unsigned int right = 3;

// The Northwest: family Sculpins at 0 with species 10, Greenlings at 1 with 11.
class SpeciesTreeTest : public SpeciesWindowTest
{
public:
  SpeciesTreeTest() { open_northwest(); }

  bool click(const char* path, unsigned int button) const
  {
    GdkEventButton event = press_on(Gtk::TreePath(path), button);
    return window->listed_panel->on_species_clicked(&event);
  }
  bool press_key(unsigned int keyval) const
  {
    GdkEventKey event = key_press(keyval);
    return window->listed_panel->on_species_kb_event(&event);
  }
  std::string cursor() const { return cursor_path(tree()).to_string(); }
};

} // namespace

TEST_F(SpeciesTreeTest, LeftClickFoldsAndUnfoldsAFamily)
{
  EXPECT_EQ("0 0", unfolded());
  EXPECT_TRUE(click("1", left));
  EXPECT_EQ("0 1", unfolded());
  EXPECT_EQ("1", cursor());
  EXPECT_TRUE(click("1", left));
  EXPECT_EQ("0 0", unfolded());
  EXPECT_EQ(nullptr, close_open_menu());
}

TEST_F(SpeciesTreeTest, RightClickOnAFamilyIsTakenAndDoesNothing)
{
  EXPECT_TRUE(click("0", right));
  EXPECT_EQ("0 0", unfolded());
  EXPECT_EQ(nullptr, close_open_menu());
}

TEST_F(SpeciesTreeTest, AClickOfEitherButtonOpensASpeciesMenu)
{
  tree().expand_all();
  for (const auto button : {left, right}) {
    EXPECT_TRUE(click("1:0", button));
    EXPECT_EQ("1:0", cursor());
    EXPECT_EQ(11, window->abundance_target);
    EXPECT_EQ(window->abundance_menus[1], close_open_menu()) << button;
    EXPECT_TRUE(tree().has_focus());
  }
}

TEST_F(SpeciesTreeTest, OtherClicksAreLeftToTheTree)
{
  tree().expand_all();
  EXPECT_FALSE(click("1:0", middle));
  GdkEventButton event = press_on(Gtk::TreePath("1:0"), left);
  for (const auto type : {GDK_2BUTTON_PRESS, GDK_3BUTTON_PRESS, GDK_BUTTON_RELEASE}) {
    event.type = type;
    EXPECT_FALSE(window->listed_panel->on_species_clicked(&event)) << type;
  }
  EXPECT_EQ(nullptr, close_open_menu());
  EXPECT_EQ(-1, window->abundance_target);
}

TEST_F(SpeciesTreeTest, AClickBelowTheRowsIsLeftToTheTree)
{
  GdkEventButton event = press_on(Gtk::TreePath("0"), left);
  event.y = 5000;
  EXPECT_FALSE(window->listed_panel->on_species_clicked(&event));
}

TEST_F(SpeciesTreeTest, AClickInAnotherWindowIsReportedAndLeftToTheTree)
{
  GdkEventButton event = press_on(Gtk::TreePath("0"), left);
  GdkWindow* const rows = event.window;
  event.window = window->get_window()->gobj();
  std::array<char, 200> expected;
  for (const char* name : {"species", "found_species"}) {
    snprintf(expected.data(), expected.size(), "hmm, %s click in some other window? %p vs. %p\n",
             name, static_cast<void*>(event.window), static_cast<void*>(rows));
    EXPECT_EQ(expected.data(), output_of(-5, [&] {
                EXPECT_TRUE(clicked_species_path(tree(), &event, name).empty());
              }));
  }
  EXPECT_FALSE(window->listed_panel->on_species_clicked(&event));
  EXPECT_EQ("0 0", unfolded());
}

TEST_F(SpeciesTreeTest, AClickIsTraced)
{
  GdkEventButton event = press_on(Gtk::TreePath("0"), left);
  event.time = 77;
  event.state = 0x10;
  event.x = 30.5;
  event.x_root = 200;
  event.y_root = 300.25;
  event.y = 12;
  std::array<double, 2> axes = {1.5, 2};
  event.axes = axes.data();
  const auto on_click = [&] { window->listed_panel->on_species_clicked(&event); };
  EXPECT_EQ("", output_of(9, on_click));
  EXPECT_EQ("@77: mw_species_tree button 1 press (type 0x4), state 0x10, (30.5,12) (0,0) "
            "(200,300.25) (no device: )\ngot path: 0\n",
            output_of(10, on_click));

  event.device = gdk_seat_get_pointer(gdk_display_get_default_seat(gdk_display_get_default()));
  event.type = GDK_2BUTTON_PRESS;
  EXPECT_EQ("@77: mw_species_tree button 1 double press (type 0x5), state 0x10, (30.5,12) (1.5,2) "
            "(200,300.25) (mouse: " +
                std::string(gdk_device_get_name(event.device)) + ")\n",
            output_of(10, on_click));
}

TEST_F(SpeciesTreeTest, AnUploadedSurveyOpensNoMenuButStillFolds)
{
  tree().expand_all();
  window->survey.is_uploaded = true;
  EXPECT_TRUE(click("1:0", left));
  EXPECT_EQ("1:0", cursor());
  EXPECT_TRUE(press_key(GDK_KEY_Return));
  EXPECT_TRUE(window->listed_panel->on_species_kb_activated());
  EXPECT_EQ(nullptr, close_open_menu());
  EXPECT_EQ(-1, window->abundance_target);

  EXPECT_TRUE(click("1", left));
  EXPECT_EQ("1 0", unfolded());
}

TEST_F(SpeciesTreeTest, ReturnRightAndTheMenuKeyOpenASpeciesMenu)
{
  put_cursor(Gtk::TreePath("1:0"));
  for (const guint keyval : {guint{GDK_KEY_Return}, guint{GDK_KEY_Right}}) {
    EXPECT_TRUE(press_key(keyval));
    EXPECT_EQ(11, window->abundance_target);
    EXPECT_EQ(window->abundance_menus[1], close_open_menu()) << keyval;
  }
  EXPECT_TRUE(window->listed_panel->on_species_kb_activated());
  EXPECT_EQ(window->abundance_menus[1], close_open_menu());
}

TEST_F(SpeciesTreeTest, TheKeysOfSpeciesLeaveFamiliesAlone)
{
  put_cursor(Gtk::TreePath("1"));
  EXPECT_TRUE(press_key(GDK_KEY_Return));
  EXPECT_TRUE(press_key(GDK_KEY_Right));
  EXPECT_TRUE(window->listed_panel->on_species_kb_activated());
  EXPECT_EQ("0 0", unfolded());
  EXPECT_EQ(nullptr, close_open_menu());
}

TEST_F(SpeciesTreeTest, PlusAndMinusFoldFamilies)
{
  put_cursor(Gtk::TreePath("1"));
  EXPECT_FALSE(press_key(GDK_KEY_plus));
  EXPECT_FALSE(press_key(GDK_KEY_minus));
  gtk_bindings_activate(G_OBJECT(tree().gobj()), GDK_KEY_plus, GdkModifierType(0));
  EXPECT_EQ("0 1", unfolded());
  gtk_bindings_activate(G_OBJECT(tree().gobj()), GDK_KEY_minus, GdkModifierType(0));
  EXPECT_EQ("0 0", unfolded());
}

TEST_F(SpeciesTreeTest, OtherKeysAreLeftToTheTree)
{
  put_cursor(Gtk::TreePath("1:0"));
  for (const guint keyval :
       {guint{GDK_KEY_Left}, guint{GDK_KEY_space}, guint{GDK_KEY_KP_Enter}, guint{GDK_KEY_a}})
    EXPECT_FALSE(press_key(keyval)) << keyval;

  GdkEventKey release = key_press(GDK_KEY_Return);
  release.type = GDK_KEY_RELEASE;
  const auto on_release = [&] {
    EXPECT_FALSE(window->listed_panel->on_species_kb_event(&release));
  };
  EXPECT_EQ("", output_of(39, on_release));
  EXPECT_EQ("ignoring key 65293\n", output_of(40, on_release));
  EXPECT_EQ(nullptr, close_open_menu());
}

TEST_F(SpeciesTreeTest, NothingHappensWithoutARow)
{
  choose_subregion("California"); // empties the page: no survey type is chosen yet
  EXPECT_FALSE(press_key(GDK_KEY_Return));
  EXPECT_FALSE(window->listed_panel->on_species_kb_activated());
  for (const auto& path : {Gtk::TreePath(), Gtk::TreePath("0"), Gtk::TreePath("7:3")})
    EXPECT_FALSE(window->listed_panel->do_species_line_trigger(path, 1, 0)) << path.to_string();
}

TEST_F(SpeciesTreeTest, ARowIsTraced)
{
  const auto trigger = [&] {
    window->listed_panel->do_species_line_trigger(Gtk::TreePath("1"), 3, 0);
    window->survey.is_uploaded = true;
    window->listed_panel->do_species_line_trigger(Gtk::TreePath("1:0"), 3, 0);
  };
  EXPECT_EQ("", output_of(29, trigger));
  EXPECT_EQ("species selected: id -1: <span weight=\"bold\" fgcolor=\"blue\">Greenlings</span>\n"
            "species selected: id 11: <span background=\"#9cf\">Lingcod</span>\n",
            output_of(30, trigger));
}

TEST_F(SpeciesTreeTest, TheIdCellTellsFamiliesFromSpecies)
{
  Gtk::CellRendererText cell;
  const auto shown = [&](const char* path) {
    render_id_cell(window->species_columns, cell, window->listed_model->get_iter(path));
    return cell.property_text().get_value();
  };
  EXPECT_EQ("Family", shown("0"));
  EXPECT_EQ("0010:", shown("0:0"));
  render_id_cell(window->species_columns, cell, Gtk::TreeIter());
  EXPECT_EQ("0010:", cell.property_text().get_value()) << "no row, no change";
}

TEST_F(SpeciesTreeTest, TypingFindsAnyPartOfAShownName)
{
  tree().expand_all();
  Gtk::Entry entry;
  tree().set_search_entry(entry);
  const struct {
    const char* typed;
    const char* found;
  } cases[] = {{"LINGCOD", "1:0"}, {"zonope", "0:0"}, {"span", ""}, {"greenl", "1"}};
  for (const auto& c : cases) {
    tree().get_selection()->unselect_all();
    entry.set_text(c.typed);
    settle();
    const auto row = tree().get_selection()->get_selected();
    EXPECT_EQ(c.found, row ? window->listed_model->get_path(row).to_string() : "") << c.typed;
  }
}

TEST_F(SpeciesTreeTest, ShowsScientificNamesWhereNoneAreAskedFor)
{
  set_species_tree_columns(tree(), window->listed_panel->species_parts, window->species_columns,
                           NameDisplay(), "Number seen");
  EXPECT_EQ("ID|Scientific Name|Number seen", column_titles());
}
