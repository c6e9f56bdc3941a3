#include "ui/plain-models.h"

#include <gtest/gtest.h>
#include <gtkmm/main.h>
#include <gtkmm/treerowreference.h>

#include <memory>
#include <string>

namespace {

class NumberColumns : public Gtk::TreeModelColumnRecord
{
public:
  NumberColumns()
  {
    add(number);
    add(name);
  }
  Gtk::TreeModelColumn<int> number;
  Gtk::TreeModelColumn<Glib::ustring> name;
};

// A store in which row 10 has the children 11, 12 and 13, and row 20 has the child 21.
class PlainModelsTest : public testing::Test
{
public:
  PlainModelsTest()
  {
    const auto tens = add(store->append(), 10);
    for (const int number : {11, 12, 13})
      add(store->append(tens->children()), number);
    const auto twenties = add(store->append(), 20);
    add(store->append(twenties->children()), 21);
  }

  Gtk::TreeIter add(const Gtk::TreeIter& row, int number)
  {
    (*row)[columns.number] = number;
    (*row)[columns.name] = "n" + std::to_string(number);
    return row;
  }
  // Returns paths and numbers of all rows, as "0=10 0:0=11".
  std::string rows(const Glib::RefPtr<Gtk::TreeModel>& model) const
  {
    std::string text;
    model->foreach ([&](const Gtk::TreePath& path, const Gtk::TreeIter& row) {
      EXPECT_EQ("n" + std::to_string(row->get_value(columns.number)), row->get_value(columns.name));
      EXPECT_EQ(path, model->get_path(row));
      text += (text.empty() ? "" : " ") + path.to_string() + "=" +
              std::to_string(row->get_value(columns.number));
      return false;
    });
    return text;
  }

  const bool is_ready = (Gtk::Main::init_gtkmm_internals(), true); // windows usually do this
  NumberColumns columns;
  Glib::RefPtr<Gtk::TreeStore> store = plain_store(columns);
};

} // namespace

TEST_F(PlainModelsTest, AStoreHasTheRowsThatGtkmmWrites)
{
  EXPECT_EQ(2, store->get_n_columns());
  EXPECT_EQ("0=10 0:0=11 0:1=12 0:2=13 1=20 1:0=21", rows(store));
  store->erase(store->get_iter("0:1"));
  EXPECT_EQ("0=10 0:0=11 0:1=13 1=20 1:0=21", rows(store));
  EXPECT_EQ(20, (*store->get_iter("1:0")->parent())[columns.number]);
  store->clear();
  EXPECT_EQ("", rows(store));
}

TEST_F(PlainModelsTest, AFilterShowsTheRowsThatItsRuleAccepts)
{
  int least = 12;
  const auto filter = plain_filter(store, [&](const Gtk::TreeIter& row) {
    const int number = row->get_value(columns.number);
    return number % 10 == 0 || number >= least;
  });
  EXPECT_EQ("0=10 0:0=12 0:1=13 1=20 1:0=21", rows(filter));
  EXPECT_EQ(GTK_TREE_MODEL(store->gobj()), filter->get_model()->gobj());
  EXPECT_EQ("0:2", filter->convert_path_to_child_path(Gtk::TreePath("0:1")).to_string());
  EXPECT_EQ("0:1", filter->convert_child_path_to_path(Gtk::TreePath("0:2")).to_string());
  EXPECT_TRUE(filter->convert_child_path_to_path(Gtk::TreePath("0:0")).empty());
  EXPECT_EQ(13,
            filter->convert_iter_to_child_iter(filter->get_iter("0:1"))->get_value(columns.number));

  least = 13;
  filter->refilter();
  EXPECT_EQ("0=10 0:0=13 1=20 1:0=21", rows(filter));
}

TEST_F(PlainModelsTest, AFilterFollowsTheRowsOfItsStore)
{
  const auto filter = plain_filter(
      store, [&](const Gtk::TreeIter& row) { return row->get_value(columns.number) != 12; });
  EXPECT_EQ("0=10 0:0=11 0:1=13 1=20 1:0=21", rows(filter));
  const Gtk::TreeRowReference thirteen(filter, Gtk::TreePath("0:1"));
  add(store->get_iter("0:1"), 14);
  EXPECT_EQ("0=10 0:0=11 0:1=14 0:2=13 1=20 1:0=21", rows(filter));
  EXPECT_EQ("0:2", thirteen.get_path().to_string());
  store->erase(store->get_iter("0:0"));
  EXPECT_EQ("0:1", thirteen.get_path().to_string());
}

TEST_F(PlainModelsTest, AFilterReleasesItsRule)
{
  const auto held = std::make_shared<int>(0);
  auto filter = plain_filter(store, [held](const Gtk::TreeIter&) { return true; });
  EXPECT_EQ(rows(store), rows(filter));
  EXPECT_EQ(2, held.use_count());
  filter.reset();
  EXPECT_EQ(1, held.use_count());
  store->clear(); // must not call the filter, which no longer exists
}
