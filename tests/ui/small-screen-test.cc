// Tests the lists of species at the window's initial size, 900 by 600, with the shipped data.

#include "support/main-loop.h"
#include "ui/confirm-panel.h"
#include "ui/listed-panel.h"
#include "ui/member-panel.h"
#include "ui/species-window.h"
#include "ui/survey-panel1.h"
#include "ui/survey-window.h"
#include "ui/unlisted-panel.h"

namespace {

class SmallScreen : public SpeciesWindowTest
{
public:
  SmallScreen() { application_dir.use_shipped_data(); }

  void open_florida()
  {
    open_survey("Florida and Gulf of Mexico", "Florida: species and abundance");
    let_draw(*window);
  }

  // Returns the number of rows that are visible in a list.
  static int rows_in_sight(Gtk::TreeView& list)
  {
    Gdk::Rectangle row;
    list.get_background_area(Gtk::TreePath("0"), *list.get_column(0), row);
    Gdk::Rectangle sight;
    list.get_visible_rect(sight);
    EXPECT_GT(row.get_height(), 15) << "too low to be clicked";
    return row.get_height() > 0 ? sight.get_height() / row.get_height() : 0;
  }

  // Returns whether a list is completely visible without scrolling its page.
  bool is_on_the_page(Gtk::Widget& list) const
  {
    auto& page = *window->notebook->get_nth_page(window->notebook->get_current_page());
    auto& frame = *list.get_parent();
    int x = 0;
    int y = 0;
    frame.translate_coordinates(page, 0, 0, x, y);
    return x >= 0 && y >= 0 && x + frame.get_allocated_width() <= page.get_allocated_width() &&
           y + frame.get_allocated_height() <= page.get_allocated_height();
  }

  // Marks the first `count` species of a store that are in (or outside) the view.
  void mark_some(const Glib::RefPtr<Gtk::TreeStore>& store, bool in_view, int count) const
  {
    std::vector<int> ids;
    store->foreach_iter([&](const Gtk::TreeIter& row) {
      const int id = row->get_value(window->species_columns.col_id);
      if (id > 0 && row->get_value(window->species_columns.col_in_view) == in_view)
        ids.push_back(id);
      return static_cast<int>(ids.size()) == count;
    });
    EXPECT_EQ(static_cast<std::size_t>(count), ids.size());
    for (const int id : ids)
      mark(id, 1);
  }
};

} // namespace

TEST_F(SmallScreen, ShowsSixteenRowsOfListedSpecies)
{
  open_florida();
  int width = 0;
  int height = 0;
  window->get_size(width, height);
  EXPECT_EQ(900, width);
  EXPECT_EQ(600, height);
  EXPECT_GE(rows_in_sight(tree()), 16);
  EXPECT_TRUE(is_on_the_page(tree()));
}

TEST_F(SmallScreen, ShowsSixRowsOfEachTableOfTheSummary)
{
  open_florida();
  window->member_panel->member_id->set_text("1234");
  window->member_panel->last_name->set_text("Smith");
  window->survey_panel1->zonecode->set_text("80080006");
  mark_some(window->listed_model, true, 20);
  mark_some(window->unlisted_model, false, 20);
  go_to_page(window->confirm_panel->page);
  let_draw(*window);
  for (auto* const table :
       {window->confirm_panel->conf_listed_tree, window->confirm_panel->conf_unlisted_tree}) {
    EXPECT_GE(rows_in_sight(*table), 6);
    EXPECT_TRUE(is_on_the_page(*table));
  }
}
