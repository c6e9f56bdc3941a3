// Tests the drop-down boxes of the real window: where their lists open, and the effects of keys.

#include "support/main-loop.h"
#include "ui/listed-panel.h"
#include "ui/species-window.h"
#include "ui/survey-panel1.h"
#include "ui/survey-panel2.h"
#include "ui/survey-window.h"
#include "ui/unlisted-panel.h"

#include <gtk/gtk-a11y.h>
#include <gtkmm/menuitem.h>
#include <gtkmm/scrolledwindow.h>
#include <gtkmm/settings.h>

#include <string>
#include <utility>
#include <vector>

namespace {

class DropDownLists : public SpeciesWindowTest
{
protected:
  void SetUp() override
  {
    application_dir.use_shipped_data();
    open_survey("Florida and Gulf of Mexico", "Florida: species and abundance");
    page1 = window->survey_panel1;
    page2 = window->survey_panel2;
  }

  // Returns every box with its page.
  std::vector<std::pair<DropDownBox*, int>> boxes() const
  {
    std::vector<std::pair<DropDownBox*, int>> all;
    for (auto* box : {page1->subregion, page1->survey_subtype, page1->month, page1->mday,
                      page1->year, page1->dive_start})
      all.emplace_back(box, page1->page);
    for (auto* box : {page2->temp_units, page2->visibility, page2->avg_depth, page2->max_depth,
                      page2->current, page2->habitat})
      all.emplace_back(box, page2->page);
    all.emplace_back(window->listed_panel->species_view, window->listed_panel->page);
    all.emplace_back(window->unlisted_panel->species_search_by, window->unlisted_panel->page);
    return all;
  }
  int page_of(const DropDownBox& wanted) const
  {
    for (const auto& [box, page] : boxes())
      if (box == &wanted)
        return page;
    return -1;
  }

  static Gtk::Menu& list_of(DropDownBox& box)
  {
    AtkObject* const accessible = gtk_combo_box_get_popup_accessible(GTK_COMBO_BOX(box.gobj()));
    return *Glib::wrap(GTK_MENU(gtk_accessible_get_widget(GTK_ACCESSIBLE(accessible))));
  }
  // Turns to the page of a box and gives it the focus.
  DropDownBox& focus(DropDownBox& box) const
  {
    go_to_page(page_of(box));
    settle();
    box.grab_focus();
    let_draw(*window);
    return box;
  }
  Gtk::Menu& open(DropDownBox& box) const
  {
    focus(box);
    box.popup();
    Gtk::Menu& list = list_of(box);
    wait_until("the list is open", [&] { return list.get_mapped(); });
    let_draw(list);
    return list;
  }
  static void close(DropDownBox& box)
  {
    box.popdown();
    wait_until("the list is closed", [&] { return !list_of(box).get_mapped(); });
  }

  // Returns the rectangle of a widget on the screen.
  static Gdk::Rectangle place_of(Gtk::Widget& widget)
  {
    int left = 0;
    int top = 0;
    int x = 0;
    int y = 0;
    widget.translate_coordinates(*widget.get_toplevel(), 0, 0, x, y);
    widget.get_toplevel()->get_window()->get_origin(left, top);
    return {left + x, top + y, widget.get_allocated_width(), widget.get_allocated_height()};
  }
  static bool is_inside(const Gdk::Rectangle& inner, const Gdk::Rectangle& outer)
  {
    return inner.get_x() >= outer.get_x() && inner.get_y() >= outer.get_y() &&
           inner.get_x() + inner.get_width() <= outer.get_x() + outer.get_width() &&
           inner.get_y() + inner.get_height() <= outer.get_y() + outer.get_height();
  }
  // Returns the labels of an open list line by line, as "1 2 3|4 5".
  static std::string lines_of(DropDownBox& box)
  {
    std::string text;
    int line = -1;
    size_t row = 0;
    for (auto* item : list_of(box).get_children()) {
      const int y = item->get_allocation().get_y();
      text += text.empty() ? "" : y == line ? " " : "|";
      line = y;
      text += box.items.at(row++).second.raw();
    }
    return text;
  }
  // Returns the label of the selected row of an open list; empty if there is none.
  static std::string picked_in(DropDownBox& box)
  {
    const auto rows = list_of(box).get_children();
    for (size_t row = 0; row < rows.size(); ++row)
      if (rows[row] == list_of(box).get_selected_item())
        return box.items.at(row).second.raw();
    return "";
  }

  // Returns the code of a key with this symbol, or 0 if there is none. Key bindings use the code.
  static guint16 code_of(guint keyval)
  {
    GdkKeymapKey* keys = nullptr;
    int count = 0;
    auto* const keymap = gdk_keymap_get_for_display(gdk_display_get_default());
    gdk_keymap_get_entries_for_keyval(keymap, keyval, &keys, &count);
    const auto code = static_cast<guint16>(count > 0 ? keys[0].keycode : 0);
    g_free(keys);
    return code;
  }
  // Presses a key. An open list gets all keys, as in the toolkit. The pause between keys is short.
  void press(guint keyval, guint state = 0)
  {
    Gtk::Widget* target = window;
    for (const auto& [box, page] : boxes())
      if (list_of(*box).get_mapped())
        target = &list_of(*box);
    GdkEvent* const event = gdk_event_new(GDK_KEY_PRESS);
    event->key.window = target->get_toplevel()->get_window()->gobj_copy();
    event->key.time = now += 100;
    event->key.state = state;
    event->key.keyval = keyval;
    event->key.hardware_keycode = code_of(keyval);
    event->key.is_modifier = keyval == GDK_KEY_Shift_L;
    gdk_event_set_device(
        event, gdk_seat_get_keyboard(gdk_display_get_default_seat(gdk_display_get_default())));
    gtk_widget_event(target->gobj(), event);
    gdk_event_free(event);
    settle();
  }
  void type(const Glib::ustring& text)
  {
    for (const gunichar letter : text)
      press(gdk_unicode_to_keyval(letter));
  }
  // Lets five seconds pass before the next key, which ends a search.
  void pause() { now += 5000; }

  SurveyPanel1* page1 = nullptr;
  SurveyPanel2* page2 = nullptr;
  guint32 now = 1000;
};

} // namespace

// --- where the lists open ---

TEST_F(DropDownLists, ShowTheDateAndTheStartTimeAsGrids)
{
  open(*page1->mday);
  EXPECT_EQ("1 2 3 4 5 6 7|8 9 10 11 12 13 14|15 16 17 18 19 20 21|22 23 24 25 26 27 28|29 30 31",
            lines_of(*page1->mday));
  close(*page1->mday);
  open(*page1->month);
  EXPECT_EQ("January February March|April May June|July August September|"
            "October November December",
            lines_of(*page1->month));
  close(*page1->month);
  open(*page1->dive_start);
  EXPECT_EQ("6 AM 7 AM 8 AM 9 AM 10 AM 11 AM|Noon 1 PM 2 PM 3 PM 4 PM 5 PM|"
            "6 PM 7 PM 8 PM 9 PM 10 PM 11 PM|Midnight 1 AM 2 AM 3 AM 4 AM 5 AM",
            lines_of(*page1->dive_start));
  close(*page1->dive_start);
  open(*page1->year);
  EXPECT_NE(std::string::npos, lines_of(*page1->year).find("|2021 2020 2019 2018 2017|"));
}

TEST_F(DropDownLists, ShowAllRowsInsideTheScreen)
{
  const auto root = window->get_screen()->get_root_window();
  const Gdk::Rectangle screen(0, 0, root->get_width(), root->get_height());
  for (const auto& [box, page] : boxes()) {
    SCOPED_TRACE(box->get_name());
    Gtk::Menu& list = open(*box);
    const Gdk::Rectangle frame = place_of(*list.get_toplevel());
    EXPECT_TRUE(is_inside(frame, screen));
    for (auto* item : list.get_children())
      EXPECT_TRUE(is_inside(place_of(*item), frame));
    close(*box);
  }
}

TEST_F(DropDownLists, OpenBelowTheirBoxAndAreAsWide)
{
  for (auto* box : {page1->subregion, page1->survey_subtype, page2->visibility}) {
    SCOPED_TRACE(box->get_name());
    const Gdk::Rectangle list = place_of(*open(*box).get_toplevel());
    const Gdk::Rectangle place = place_of(*box);
    EXPECT_EQ(place.get_x(), list.get_x());
    EXPECT_EQ(place.get_y() + place.get_height(), list.get_y());
    EXPECT_EQ(place.get_width(), list.get_width());
    close(*box);
  }
}

TEST_F(DropDownLists, DoNotCoverTheHabitatDescriptions)
{
  const Gdk::Rectangle list = place_of(*open(*page2->habitat).get_toplevel());
  const Gdk::Rectangle box = place_of(*page2->habitat);
  EXPECT_EQ(box.get_x(), list.get_x() + list.get_width());
  EXPECT_EQ(box.get_y(), list.get_y());
  EXPECT_LE(list.get_x() + list.get_width(), place_of(*page2->habitat_descr).get_x());
}

TEST_F(DropDownLists, OpenAtTheChosenRow)
{
  choose(*page2->max_depth, "130 ft (40 m) or deeper");
  choose(*page1->year, "1993");
  for (auto* box : {page2->max_depth, page1->year}) {
    open(*box);
    EXPECT_EQ(box->get_label().raw(), picked_in(*box));
    close(*box);
  }
}

TEST_F(DropDownLists, KeepTheirNamesForScreenReaders)
{
  for (const auto& [box, page] : boxes()) {
    SCOPED_TRACE(box->get_name());
    const auto list = list_of(*box).get_accessible();
    EXPECT_EQ(box->get_accessible()->get_name(), list->get_name());
    open(*box);
    for (int row = 0; row < list->get_n_accessible_children(); ++row)
      EXPECT_NE("", list->get_accessible_child(row)->get_name());
    EXPECT_EQ(box->get_model()->children().size(),
              static_cast<size_t>(list->get_n_accessible_children()));
    close(*box);
  }
}

// A long name must not make a page wider than the window.
TEST_F(DropDownLists, TruncateALongTextInANarrowBox)
{
  const auto settings = Gtk::Settings::get_default();
  settings->property_gtk_xft_dpi() = 2 * 96 * 1024;
  settle();
  for (auto* box :
       {page1->subregion, page1->survey_subtype, page2->visibility, page2->avg_depth,
        page2->max_depth, page2->current, page2->habitat, window->listed_panel->species_view}) {
    int least = 0;
    int natural = 0;
    wait_until("the box measures large text", [&] {
      box->get_preferred_width(least, natural);
      return natural > 300;
    });
    EXPECT_LT(least, 250) << box->get_name();
  }
  settings->property_gtk_xft_dpi() = 96 * 1024;
  settle();
}

// --- the arrow keys ---

TEST_F(DropDownLists, FollowTheArrowKeysThroughAGrid)
{
  choose(*page1->mday, "10");
  open(*page1->mday);
  press(GDK_KEY_Down);
  EXPECT_EQ("17", picked_in(*page1->mday));
  press(GDK_KEY_Right);
  EXPECT_EQ("18", picked_in(*page1->mday));
  press(GDK_KEY_Up);
  EXPECT_EQ("11", picked_in(*page1->mday));
  press(GDK_KEY_Left);
  press(GDK_KEY_Left);
  EXPECT_EQ("9", picked_in(*page1->mday));
  press(GDK_KEY_Return);
  EXPECT_EQ("9", page1->mday->get_label());
}

// --- typing ---

TEST_F(DropDownLists, SelectWhatIsTypedAndChooseItOnReturn)
{
  focus(*page1->mday);
  open(*page1->mday);
  type("12");
  EXPECT_EQ("12", picked_in(*page1->mday));
  EXPECT_EQ("", page1->mday->get_label()) << "not yet";
  press(GDK_KEY_Return);
  EXPECT_EQ("12", page1->mday->get_label());
  open(*page1->mday);
  type("3");
  EXPECT_EQ("30", picked_in(*page1->mday)) << "the next one after 12";
  press(GDK_KEY_Escape);
  EXPECT_EQ("12", page1->mday->get_label());
}

TEST_F(DropDownLists, SelectWhatIsTypedOnAKeypad)
{
  open(*page1->mday);
  press(GDK_KEY_KP_2);
  press(GDK_KEY_KP_5);
  press(GDK_KEY_KP_Enter);
  EXPECT_EQ("25", page1->mday->get_label());
}

TEST_F(DropDownLists, ContinueFromTheRowThatTheArrowsReached)
{
  open(*page1->mday);
  EXPECT_EQ("1", picked_in(*page1->mday)) << "without a choice";
  type("1");
  EXPECT_EQ("1", picked_in(*page1->mday)) << "the first row that fits";
  press(GDK_KEY_Down);
  EXPECT_EQ("8", picked_in(*page1->mday));
  type("1");
  EXPECT_EQ("10", picked_in(*page1->mday)) << "a new search";
}

TEST_F(DropDownLists, ChooseInAClosedBoxWhatIsTyped)
{
  int changes = 0;
  page1->month->signal_changed().connect([&] { ++changes; });
  focus(*page1->month);
  type("ju");
  EXPECT_EQ("June", page1->month->get_label());
  EXPECT_EQ(2, changes) << "January and June, as the arrow keys do";
  EXPECT_FALSE(list_of(*page1->month).get_mapped());
  pause();
  type("Ju");
  EXPECT_EQ("July", page1->month->get_label());
  pause();
  type("x");
  EXPECT_EQ("July", page1->month->get_label()) << "no such month";
}

TEST_F(DropDownLists, ChooseByTypingInEveryClosedBox)
{
  for (const auto& [box, page] : boxes()) {
    SCOPED_TRACE(box->get_name());
    focus(*box);
    const auto last = box->get_model()->children().size() - 1;
    Glib::ustring label;
    box->get_model()->children()[static_cast<guint>(last)].get_value(0, label);
    pause();
    type(label);
    EXPECT_EQ(label, box->get_active_text());
    settle();
  }
}

TEST_F(DropDownLists, RunTheHandlersOfAChoiceByTyping)
{
  focus(*page2->avg_depth);
  type("sn");
  EXPECT_EQ("Snorkel", page2->max_depth->get_label());
  EXPECT_FALSE(page2->max_depth->get_sensitive());
  pause();
  type("40");
  EXPECT_EQ("40-49 ft (12-15 m)", page2->avg_depth->get_label());
  EXPECT_EQ("", page2->max_depth->get_label());
  EXPECT_TRUE(page2->max_depth->get_sensitive());
}

TEST_F(DropDownLists, TreatABlankAsALetterOnlyWithinAText)
{
  focus(*page1->dive_start);
  type("1 P");
  EXPECT_EQ("1 PM", page1->dive_start->get_label());
  open(*page1->dive_start);
  type("noon");
  press(GDK_KEY_space);
  EXPECT_EQ("Noon", page1->dive_start->get_label()) << "chooses: no row begins with \"noon \"";
}

TEST_F(DropDownLists, DoNotHandleShortcuts)
{
  focus(*page1->month);
  for (const guint state : {guint{GDK_CONTROL_MASK}, guint{GDK_MOD1_MASK}, guint{GDK_SUPER_MASK}}) {
    press(GDK_KEY_d, state);
    EXPECT_EQ("", page1->month->get_label()) << state;
  }
  focus(*page1->month);
  press(GDK_KEY_D, GDK_SHIFT_MASK | GDK_LOCK_MASK | GDK_MOD2_MASK);
  EXPECT_EQ("December", page1->month->get_label());
}

TEST_F(DropDownLists, KeepASearchWhileShiftIsPressed)
{
  focus(*page1->month);
  type("j");
  press(GDK_KEY_Shift_L);
  type("U");
  EXPECT_EQ("June", page1->month->get_label());
}

TEST_F(DropDownLists, DoNotChangeInAnUploadedSurvey)
{
  page1->disable_inputs();
  go_to_page(page1->page);
  page1->month->grab_focus();
  type("ju");
  EXPECT_EQ("", page1->month->get_label());
}
