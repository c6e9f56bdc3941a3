#include "core/widget-helpers.h"

#include <gtest/gtest.h>
#include <gtkmm/grid.h>
#include <gtkmm/label.h>

TEST(WidgetHelpers, AFillerIsAnEmptyLabelThatItsContainerOwns)
{
  Gtk::Grid grid;
  Gtk::Label* const filler = make_filler();
  EXPECT_EQ("", filler->get_text().raw());
  EXPECT_TRUE(filler->is_managed_());
  grid.attach(*filler, 0, 0);
}

TEST(WidgetHelpers, WordsBreakAnywhereWithoutAHyphen)
{
  Gtk::Label label(std::string(100, 'w'));
  label.set_line_wrap();
  label.set_max_width_chars(10);
  break_anywhere(label);
  const auto layout = Pango::Layout::create(label.get_pango_context());
  layout->set_text(label.get_text());
  layout->set_wrap(label.get_line_wrap_mode());
  layout->set_width(50 * Pango::SCALE);
  auto attributes = label.get_attributes();
  layout->set_attributes(attributes);
  EXPECT_GT(layout->get_line_count(), 10);
  int glyphs = 0;
  PangoLayoutIter* const runs = pango_layout_get_iter(layout->gobj());
  do {
    if (const auto* const run = pango_layout_iter_get_run_readonly(runs))
      glyphs += run->glyphs->num_glyphs;
  } while (pango_layout_iter_next_run(runs));
  pango_layout_iter_free(runs);
  EXPECT_EQ(100, glyphs); // a hyphen would be another glyph
}

TEST(WidgetHelpers, ShowOrHideShowsOrHidesAWidget)
{
  Gtk::Label label;
  show_or_hide(&label, true);
  EXPECT_TRUE(label.get_visible());
  show_or_hide(&label, false);
  EXPECT_FALSE(label.get_visible());
}
