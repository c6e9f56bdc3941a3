#include "ui/geog-tree-columns.h"

#include <gtest/gtest.h>
#include <gtkmm/treestore.h>

#include <string>

namespace {

// Returns the labels of all rows, indented by two blanks for each level.
std::string labels_in(const Glib::RefPtr<Gtk::TreeStore>& store, const GeogTreeColumns& columns)
{
  std::string text;
  store->foreach ([&](const Gtk::TreePath& path, const Gtk::TreeIter& row) {
    const auto depth = static_cast<std::size_t>(path.size() - 1);
    text += std::string(2 * depth, ' ') + row->get_value(columns.col_label).raw() + "\n";
    return false;
  });
  return text;
}

} // namespace

TEST(GeogTreeColumns, SetIdNameAndLabelInThatOrder)
{
  const GeogTreeColumns columns;
  EXPECT_EQ(0, columns.col_id.index());
  EXPECT_EQ(1, columns.col_name.index());
  EXPECT_EQ(2, columns.col_label.index());

  const auto store = Gtk::TreeStore::create(columns);
  const auto row = *store->append();
  columns.set(row, 31020003, "Bahía & <Reefs>");
  EXPECT_EQ(31020003, row.get_value(columns.col_id));
  EXPECT_EQ("Bahía & <Reefs>", row.get_value(columns.col_name).raw());
  EXPECT_EQ("31020003: Bahía & <Reefs>", row.get_value(columns.col_label).raw());
}

TEST(GeogTreeColumns, FillAStoreInTheOrderOfTheTree)
{
  const Glib::ustring name = "Ölgrund";
  const GeogTreeColumns columns;
  const auto store = Gtk::TreeStore::create(columns);
  columns.fill(store, {{0, 3, &name},
                       {1, 31, &name},
                       {2, 3102, &name},
                       {2, 3103, &name},
                       {1, 32, &name},
                       {0, -5, &name},
                       {1, -51, &name}});
  EXPECT_EQ("3: Ölgrund\n"
            "  31: Ölgrund\n"
            "    3102: Ölgrund\n"
            "    3103: Ölgrund\n"
            "  32: Ölgrund\n"
            "-5: Ölgrund\n"
            "  -51: Ölgrund\n",
            labels_in(store, columns));
  const auto first = *store->children().begin();
  EXPECT_EQ(3, first.get_value(columns.col_id));
  EXPECT_EQ("Ölgrund", first.get_value(columns.col_name).raw());
}

TEST(GeogTreeColumns, LeaveAStoreEmptyWithoutZones)
{
  const GeogTreeColumns columns;
  const auto store = Gtk::TreeStore::create(columns);
  columns.fill(store, {});
  EXPECT_TRUE(store->children().empty());
}
