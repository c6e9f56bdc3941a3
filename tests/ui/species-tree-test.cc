#include "support/keys.h"
#include "support/main-loop.h"
#include "support/output.h"
#include "ui/listed-panel.h"
#include "ui/species-tree.h"
#include "ui/species-window.h"
#include "ui/survey-window.h"
#include "ui/unlisted-panel.h"

#include <gtk/gtk.h>

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

TEST_F(SpeciesTreeTest, LeftClickCollapsesAndExpandsAFamily)
{
  EXPECT_EQ("0 0", unfolded());
  EXPECT_TRUE(click("1", left));
  EXPECT_EQ("0 1", unfolded());
  EXPECT_EQ("1", cursor());
  EXPECT_TRUE(click("1", left));
  EXPECT_EQ("0 0", unfolded());
  EXPECT_EQ(nullptr, close_open_menu());
}

TEST_F(SpeciesTreeTest, RightClickOnAFamilyDoesNothing)
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

TEST_F(SpeciesTreeTest, TheTreeHandlesOtherClicks)
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

TEST_F(SpeciesTreeTest, TheTreeHandlesAClickBelowTheRows)
{
  GdkEventButton event = press_on(Gtk::TreePath("0"), left);
  event.y = 5000;
  EXPECT_FALSE(window->listed_panel->on_species_clicked(&event));
}

TEST_F(SpeciesTreeTest, AClickInAnotherWindowIsReportedAndTheTreeHandlesIt)
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

TEST_F(SpeciesTreeTest, AnUploadedSurveyOpensNoMenuButStillCollapses)
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

TEST_F(SpeciesTreeTest, TheKeysOfSpeciesDoNotAffectFamilies)
{
  put_cursor(Gtk::TreePath("1"));
  EXPECT_TRUE(press_key(GDK_KEY_Return));
  EXPECT_TRUE(press_key(GDK_KEY_Right));
  EXPECT_TRUE(window->listed_panel->on_species_kb_activated());
  EXPECT_EQ("0 0", unfolded());
  EXPECT_EQ(nullptr, close_open_menu());
}

TEST_F(SpeciesTreeTest, PlusAndMinusExpandAndCollapseFamilies)
{
  put_cursor(Gtk::TreePath("1"));
  EXPECT_FALSE(press_key(GDK_KEY_plus));
  EXPECT_FALSE(press_key(GDK_KEY_minus));
  gtk_bindings_activate(G_OBJECT(tree().gobj()), GDK_KEY_plus, GdkModifierType(0));
  EXPECT_EQ("0 1", unfolded());
  gtk_bindings_activate(G_OBJECT(tree().gobj()), GDK_KEY_minus, GdkModifierType(0));
  EXPECT_EQ("0 0", unfolded());
}

TEST_F(SpeciesTreeTest, TheTreeHandlesOtherKeys)
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

TEST_F(SpeciesTreeTest, TheIdCellDistinguishesFamiliesFromSpecies)
{
  Gtk::CellRendererText cell;
  const auto shown = [&](const char* path) {
    render_id_cell(window->species_columns, cell, window->listed_model->get_iter(path));
    return cell.property_text().get_value();
  };
  EXPECT_EQ("Family", shown("0"));
  EXPECT_EQ("0010:", shown("0:0"));
  render_id_cell(window->species_columns, cell, Gtk::TreeIter());
  EXPECT_EQ("0010:", cell.property_text().get_value()) << "no change without a row";
}

// --- typing in the tree ---

namespace {

class TypingTest : public SpeciesWindowTest
{
public:
  void start_at(const char* path)
  {
    put_cursor(Gtk::TreePath(path));
    wait_until("the tree has the keyboard", [this] { return tree().has_focus(); });
  }
  void type(const char* text) { type_text(*window, text); }
  void press(unsigned int keyval) { press_key(*window, keyval); }
  // Types the text in a new search, ends the search, and returns the row that was found.
  std::string found_by(const char* text)
  {
    start_at("0");
    type(text);
    std::string row = cursor();
    press(GDK_KEY_Escape);
    return row;
  }
  Gtk::SearchEntry* field() { return window->listed_panel->species_parts.name_finder.entry; }
  bool is_searching() { return field() && field()->get_mapped(); }
  std::string cursor() const { return cursor_path(tree()).to_string(); }
};

// The two species of SpeciesTreeTest.
class TypingInATree : public TypingTest
{
public:
  TypingInATree() { open_northwest(); }
};

// All species of a place, in a tree that scrolls.
class TypingInALongTree : public TypingTest
{
public:
  TypingInALongTree()
  {
    application_dir.use_shipped_data();
    open_survey("Florida and Gulf of Mexico", "Florida: species and abundance");
    tree().expand_all();
    settle();
  }
  // Returns the top and the bottom of the cursor's row on the screen, in pixels.
  std::pair<int, int> row_on_screen()
  {
    Gdk::Rectangle row;
    tree().get_cell_area(cursor_path(tree()), *tree().get_column(0), row);
    int x = 0;
    int y = 0;
    tree().get_bin_window()->get_root_coords(0, row.get_y(), x, y);
    return {y, y + row.get_height()};
  }
  // Returns the top and the bottom of the open menu on the screen, in pixels.
  std::pair<int, int> menu_on_screen()
  {
    const auto surface = window->current_abundance_menu->get_window();
    int x = 0;
    int y = 0;
    surface->get_origin(x, y);
    return {y, y + surface->get_height()};
  }
};

// More species, some of which have names with the same beginnings or words.
class TypingAmongMany : public TypingTest
{
public:
  TypingAmongMany()
  {
    application_dir.file("PAC-species-info.csv",
                         "speciesid,scientificname,commonname,familyid,invertebratetype,"
                         "rarefishind,spanishname\n"
                         "10,Xxx,Red Perch,F1,0,0,Ángel rojo\n11,Bbb,Perch,F1,0,0,\n"
                         "12,Ccc,Kelp Perch,F2,0,1,\n13,Ddd,Perch-Eel,F2,0,0,\n");
    application_dir.file("species-views.csv",
                         "viewid,speciesid,familyid\n1,10,F1\n1,11,F1\n1,12,F2\n1,13,F2\n");
    open_northwest();
    tree().collapse_all();
  }
};

} // namespace

TEST_F(TypingInATree, FindsTheBeginningsOfWordsOfTheNamesShown)
{
  EXPECT_EQ("1:0", found_by("LINGCOD"));
  EXPECT_EQ("0:0", found_by("zonope"));
  EXPECT_EQ("1", found_by("greenl"));
  EXPECT_EQ("0", found_by("span")) << "tags are not words, and the cursor does not move";
  EXPECT_EQ("0", found_by("ingcod")) << "the middle of a word";
}

TEST_F(TypingInATree, FollowsTheNamesThatAreShown)
{
  window->listed_panel->name_display_common->set_active();
  EXPECT_EQ("0", found_by("zonope"));
  window->listed_panel->name_display_scientific->set_active();
  EXPECT_EQ("0:0", found_by("zonope"));
  EXPECT_EQ("0", found_by("lingcod"));
}

TEST_F(TypingInATree, ShowsThatNothingIsFound)
{
  start_at("0");
  type("zzz");
  EXPECT_TRUE(field()->get_style_context()->has_class("error"));
  EXPECT_EQ("No name begins with this", field()->get_accessible()->get_description());
  press(GDK_KEY_Return);
  EXPECT_EQ(nullptr, close_open_menu());
  EXPECT_FALSE(is_searching());
  type("l");
  EXPECT_FALSE(field()->get_style_context()->has_class("error"));
}

TEST_F(TypingInATree, ReturnsTheFocusToTheTree)
{
  for (const guint key : {guint{GDK_KEY_Escape}, guint{GDK_KEY_Return}}) {
    start_at("0");
    type("greenl");
    EXPECT_TRUE(is_searching());
    EXPECT_TRUE(field()->is_focus());
    press(key);
    EXPECT_FALSE(is_searching());
    EXPECT_TRUE(tree().is_focus());
    EXPECT_EQ("1", cursor());
    EXPECT_EQ(nullptr, close_open_menu());
  }
}

TEST_F(TypingInATree, BeginsWithAnEmptyTextOnCtrlF)
{
  start_at("0");
  press_key(*window, GDK_KEY_f, GDK_CONTROL_MASK);
  EXPECT_TRUE(is_searching());
  EXPECT_EQ("", field()->get_text());
  EXPECT_FALSE(field()->get_style_context()->has_class("error"));
  type("ling");
  EXPECT_EQ("1:0", cursor());
}

TEST_F(TypingInATree, EndsWithTheTabKeyOrAnotherPage)
{
  start_at("0");
  type("ling");
  press(GDK_KEY_Tab);
  EXPECT_FALSE(is_searching());
  EXPECT_FALSE(tree().is_focus());

  start_at("0");
  type("ling");
  go_to_page(window->unlisted_panel->page);
  settle();
  EXPECT_FALSE(is_searching());
}

TEST_F(TypingInATree, LeavesPlusAndMinusToFamilies)
{
  start_at("1");
  press(GDK_KEY_plus);
  EXPECT_EQ("0 1", unfolded());
  press(GDK_KEY_minus);
  EXPECT_EQ("0 0", unfolded());
  EXPECT_FALSE(is_searching());
}

TEST_F(TypingInATree, KeepsTheFieldWhileAMenuHasTheKeyboard)
{
  start_at("0");
  type("li");
  move_keyboard(*window, false);
  EXPECT_TRUE(is_searching());
  move_keyboard(*window, true);
  type("ng");
  EXPECT_EQ("ling", field()->get_text());
  EXPECT_TRUE(field()->is_focus());
  EXPECT_EQ("1:0", cursor());
}

// Until the program releases the keyboard, the display sends keys to the closed menu.
TEST_F(TypingInATree, GetsTheKeysThatTheMenuGetsAfterItHasClosed)
{
  start_at("1:0");
  press(GDK_KEY_Return);
  auto& menu = *window->current_abundance_menu;
  const auto surface = menu.get_window();
  press(GDK_KEY_s);
  EXPECT_FALSE(menu.get_mapped());
  EXPECT_EQ(1, window->survey.abundances[11]);
  for (const char letter : {'m', 'o'}) // an open menu would choose "Many" at "m"
    press_key_in_queue(surface, static_cast<guint>(letter));
  EXPECT_EQ(1, window->survey.abundances[11]);
  ASSERT_TRUE(is_searching());
  EXPECT_EQ("mo", field()->get_text());
}

TEST_F(TypingInATree, LeavesTheMenuOpenWhenAnEarlierGrabEnds)
{
  start_at("1:0");
  press(GDK_KEY_Return);
  report_end_of_grab(window->current_abundance_menu->get_window());
  EXPECT_EQ(window->current_abundance_menu, close_open_menu());
}

TEST_F(TypingInALongTree, OpensTheMenuBesideARowThatIsNotYetScrolledIntoView)
{
  using Keys = std::vector<unsigned int>;
  for (const Keys& keys : {Keys{'w', 'h', 'i', GDK_KEY_Down, GDK_KEY_Return}, // a species
                           Keys{'y', GDK_KEY_Return}}) {
    start_at("0");
    press_keys_at_once(*window, keys);
    ASSERT_TRUE(window->current_abundance_menu->get_mapped());
    let_draw(*window);
    let_draw(*window);
    const auto row = row_on_screen();
    const auto menu = menu_on_screen();
    EXPECT_TRUE(menu.first == row.second || menu.second == row.first)
        << "row " << row.first << " to " << row.second << ", menu " << menu.first << " to "
        << menu.second;
    EXPECT_EQ(window->current_abundance_menu, close_open_menu());
  }
}

TEST_F(TypingAmongMany, PrefersNamesThatBeginWithTheText)
{
  start_at("0");
  type("perch");
  EXPECT_EQ("0:1", cursor());
  press(GDK_KEY_Down);
  EXPECT_EQ("1:1", cursor());
  press(GDK_KEY_Down);
  EXPECT_EQ("0:0", cursor());
  press(GDK_KEY_Down);
  EXPECT_EQ("1:0", cursor());
  press(GDK_KEY_Down);
  EXPECT_EQ("0:1", cursor()) << "continues at the best match";
  press(GDK_KEY_Up);
  EXPECT_EQ("1:0", cursor());
}

TEST_F(TypingTest, PrefersASpeciesToAFamilyThatBeginsLikeIt)
{
  application_dir.file("PAC-species-info.csv",
                       "speciesid,scientificname,commonname,familyid,invertebratetype,"
                       "rarefishind,spanishname\n"
                       "10,Aaa,Lingcod,F2,0,0,\n11,Bbb,Greenlings,F2,0,0,\n");
  application_dir.file("species-views.csv", "viewid,speciesid,familyid\n1,10,F2\n1,11,F2\n");
  open_northwest();
  start_at("0");
  type("greenl");
  EXPECT_EQ("0:1", cursor());
  press(GDK_KEY_Down);
  EXPECT_EQ("0", cursor());
}

TEST_F(TypingAmongMany, ExpandsOnlyTheFamilyOfTheRowThatIsFound)
{
  start_at("0");
  EXPECT_EQ("0 0", unfolded());
  type("k");
  EXPECT_EQ("0 1", unfolded());
  press(GDK_KEY_BackSpace);
  type("red");
  EXPECT_EQ("1 0", unfolded());
  press(GDK_KEY_Escape);
  EXPECT_EQ("1 0", unfolded());
  type("k");
  EXPECT_EQ("1 1", unfolded()) << "a family that an earlier search found stays expanded";
}

TEST_F(TypingAmongMany, ExpandsAFamilyOnlyWhileItIsFound)
{
  start_at("0");
  type("greenl");
  EXPECT_EQ("1", cursor());
  EXPECT_EQ("0 1", unfolded());
  for (int letters = 0; letters < 6; ++letters)
    press(GDK_KEY_BackSpace);
  type("red");
  EXPECT_EQ("0:0", cursor());
  EXPECT_EQ("1 0", unfolded());
}

TEST_F(TypingAmongMany, FindsSpanishNamesWhileTheyAreShown)
{
  window->listed_panel->spanish_enable->set_active(false);
  EXPECT_EQ("0", found_by("angel"));
  window->listed_panel->spanish_enable->set_active();
  EXPECT_EQ("0:0", found_by("angel"));
}

TEST_F(TypingAmongMany, ReturnOpensTheMenuOfTheRowThatWasFoundBesideIt)
{
  start_at("0");
  type("kelp");
  press(GDK_KEY_Return);
  EXPECT_EQ(12, window->abundance_target);
  auto* const menu = window->current_abundance_menu;
  wait_until("the menu is open", [&] { return menu->get_mapped(); });

  Gdk::Rectangle cell;
  tree().get_cell_area(Gtk::TreePath("1:0"), *tree().get_column(2), cell);
  int x = 0;
  int y = 0;
  tree().get_bin_window()->get_root_coords(cell.get_x(), cell.get_y(), x, y);
  int menu_x = 0;
  int menu_y = 0;
  menu->get_window()->get_origin(menu_x, menu_y);
  EXPECT_EQ(x, menu_x);
  EXPECT_EQ(y + cell.get_height(), menu_y);

  type("m");
  EXPECT_EQ((std::map<int, int>{{12, 3}}), window->survey.abundances);
  EXPECT_FALSE(menu->get_mapped());
  EXPECT_TRUE(tree().is_focus());
  EXPECT_EQ("1:0", cursor());
}

TEST_F(TypingAmongMany, AnUploadedSurveyFindsRowsAndOpensNoMenu)
{
  window->survey.is_uploaded = true;
  start_at("0");
  type("kelp");
  press(GDK_KEY_Return);
  EXPECT_EQ("1:0", cursor());
  EXPECT_EQ(nullptr, close_open_menu());
}

TEST_F(SpeciesTreeTest, ShowsScientificNamesIfNoNamesAreSelected)
{
  set_species_tree_columns(tree(), window->listed_panel->species_parts, window->species_columns,
                           NameDisplay(), "Number seen");
  EXPECT_EQ("ID|Scientific Name|Number seen", column_titles());
}
