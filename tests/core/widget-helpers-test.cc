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

TEST(WidgetHelpers, ShowOrHideDoesWhatItSays)
{
  Gtk::Label label;
  show_or_hide(&label, true);
  EXPECT_TRUE(label.get_visible());
  show_or_hide(&label, false);
  EXPECT_FALSE(label.get_visible());
}
