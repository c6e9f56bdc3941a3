#include "support/output.h"
#include "ui/species-columns.h"

#include <gtest/gtest.h>
#include <gtkmm/treestore.h>

namespace {

// A store with one row, and a list of four choices.
class SpeciesColumnsTest : public testing::Test
{
public:
  SpeciesColumnsTest() { columns.choices = &choices; }

  void set(int id, int abundance, bool in_view, int rarity)
  {
    columns.set(*row, id, "Lingcod & co", "Ophiodon elongatus", "Bacalao", abundance, in_view,
                rarity);
  }
  int abundance() const { return row->get_value(columns.col_abundance); }
  Glib::ustring label() const { return row->get_value(columns.col_abundance_label); }

  std::vector<AbundanceChoices::Choice> choices = {
      {-1, 0, "None"}, {101, 1, "Single (1)"}, {-1, 0, "Oops"}, {103, 3, "Many (11-100)"}};
  SpeciesTreeColumns columns{nullptr};
  Glib::RefPtr<Gtk::TreeStore> store = Gtk::TreeStore::create(columns);
  Gtk::TreeIter row = store->append();
};

} // namespace

TEST_F(SpeciesColumnsTest, HaveAFixedOrder)
{
  EXPECT_EQ(0, columns.col_id.index());
  EXPECT_EQ(1, columns.col_common.index());
  EXPECT_EQ(2, columns.col_scientific.index());
  EXPECT_EQ(3, columns.col_both.index());
  EXPECT_EQ(4, columns.col_spanish.index());
  EXPECT_EQ(5, columns.col_abundance.index());
  EXPECT_EQ(6, columns.col_abundance_label.index());
  EXPECT_EQ(7, columns.col_in_view.index());
  EXPECT_EQ(8u, columns.size());
}

TEST_F(SpeciesColumnsTest, SetWritesAllCellsOfARow)
{
  set(11, 1, true, 1);
  EXPECT_EQ(11, row->get_value(columns.col_id));
  EXPECT_EQ("<span background=\"#9cf\">Lingcod &amp; co</span>",
            row->get_value(columns.col_common));
  EXPECT_EQ("<span background=\"#9cf\">Ophiodon elongatus</span>",
            row->get_value(columns.col_scientific));
  EXPECT_EQ("<span background=\"#9cf\">Lingcod &amp; co <i>(Ophiodon elongatus)</i></span>",
            row->get_value(columns.col_both));
  EXPECT_EQ("<span background=\"#9cf\">Bacalao</span>", row->get_value(columns.col_spanish));
  EXPECT_EQ(1, abundance());
  EXPECT_EQ("Single (1)", label());
  EXPECT_TRUE(row->get_value(columns.col_in_view));

  set(12, 0, false, 0);
  EXPECT_EQ("Lingcod &amp; co", row->get_value(columns.col_common));
  EXPECT_EQ("None", label());
  EXPECT_FALSE(row->get_value(columns.col_in_view));
}

TEST_F(SpeciesColumnsTest, LimitAnAbundanceToTheList)
{
  const struct {
    int abundance;
    int shown;
    const char* label;
  } cases[] = {
      {0, 0, "None"},
      {1, 1, "Single (1)"},
      {2, 2, "Oops"},
      {3, 3, "Many (11-100)"},
      {4, 3, "Many (11-100)"},
      {2147483647, 3, "Many (11-100)"},
      {-1, -1, ""},
      {-2147483647 - 1, -2147483647 - 1, ""},
  };
  for (const auto& c : cases) {
    columns.set_abundance(*row, c.abundance);
    EXPECT_EQ(c.shown, abundance()) << c.abundance;
    EXPECT_EQ(c.label, label()) << c.abundance;
  }
}

TEST_F(SpeciesColumnsTest, ShowNoLabelWithoutAList)
{
  choices.clear();
  columns.set_abundance(*row, 5);
  EXPECT_EQ(5, abundance());
  EXPECT_EQ("", label());

  columns.choices = nullptr;
  columns.set_abundance(*row, 6);
  EXPECT_EQ(6, abundance());
  EXPECT_EQ("", label());
}

TEST_F(SpeciesColumnsTest, TraceAnAbundance)
{
  set(11, 0, false, 0);
  const auto set_nine = [&] { columns.set_abundance(*row, 9); };
  EXPECT_EQ("", output_of(4, set_nine));
  EXPECT_EQ("set_abundance(): species id 11 = 3 (Many (11-100))\n", output_of(5, set_nine));
}
