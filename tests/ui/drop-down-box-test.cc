#include "support/output.h"
#include "ui/drop-down-box.h"

#include <gtest/gtest.h>
#include <gtkmm/window.h>

#include <memory>
#include <string>

namespace {

// A box from a separate definition, with two entries that the program did not add.
class DropDown : public testing::Test
{
public:
  DropDown()
  {
    const auto builder = Gtk::Builder::create_from_string(
        "<interface><object class='GtkWindow' id='window'><child>"
        "<object class='GtkComboBoxText' id='box'>"
        "<items><item>Common Name</item><item>Species Code</item></items>"
        "<child internal-child='accessible'><object class='AtkObject'>"
        "<property name='AtkObject::accessible-name'>Search in</property></object></child>"
        "</object></child></object></interface>");
    Gtk::Window* found = nullptr;
    builder->get_widget("window", found);
    window.reset(found);
    builder->get_widget_derived("box", box);
    box->signal_changed().connect([this] { ++changes; });
  }

  // Returns the labels in the order in which the user sees them.
  std::string shown() const
  {
    std::string labels;
    for (const auto& row : box->get_model()->children()) {
      Glib::ustring label;
      row.get_value(0, label);
      labels += (labels.empty() ? "" : ",") + label.raw();
    }
    return labels;
  }
  std::string stored() const
  {
    std::string items;
    for (const auto& [id, label] : box->items)
      items += (items.empty() ? "" : ",") + std::to_string(id) + "=" + label.raw();
    return items;
  }

  // Gives the focus to the box. Returns the accessible object of the widget that gets it, a button
  // that the toolkit creates in the box.
  Glib::RefPtr<Atk::Object> focused() const
  {
    box->grab_focus();
    return window->get_focus()->get_accessible();
  }

  std::unique_ptr<Gtk::Window> window;
  DropDownBox* box = nullptr;
  int changes = 0;
};

const std::vector<int> values = {10, 20, 30, 40};
const std::vector<Glib::ustring> labels = {"a", "b", "c", "d"};

} // namespace

TEST_F(DropDown, StartsWithNoItemsAndNoChoice)
{
  EXPECT_TRUE(box->items.empty());
  EXPECT_EQ(-1, box->no_value);
  EXPECT_EQ(-1, box->get_id());
  EXPECT_EQ("", box->get_label());
}

TEST_F(DropDown, ReadsTheTextOfARowWithoutAnItem)
{
  box->set_active(1);
  EXPECT_EQ(-1, box->get_id());
  EXPECT_EQ("Species Code", box->get_label());
  box->add_item(7, "Late"); // row 2, item 0
  box->set_active(2);
  EXPECT_EQ(-1, box->get_id());
  EXPECT_EQ("Late", box->get_label());
}

TEST_F(DropDown, KeepsTheOrderOfAListOfPairs)
{
  box->set_active(1);
  box->init({{3, "three"}, {1, "one"}, {1, "uno"}}, 0);
  EXPECT_EQ("three,one,uno", shown());
  EXPECT_EQ("3=three,1=one,1=uno", stored());
  EXPECT_EQ(-1, box->get_active_row_number());
  EXPECT_EQ(0, box->get_id()) << "no_value, as in a date box";
  EXPECT_EQ("", box->get_label());
}

TEST_F(DropDown, IsEmptyAfterAnEmptyList)
{
  box->set_active(0);
  box->init({}, -1);
  EXPECT_EQ("", shown());
  EXPECT_EQ(-1, box->get_id());
  box->init(values, labels, -1, 0);
  box->init({}, {}, -1, 6);
  EXPECT_EQ("", shown());
  EXPECT_EQ("", stored());
}

TEST_F(DropDown, BeginsWithTheRequestedEntryAndOmitsNone)
{
  const struct {
    unsigned int first;
    const char *shown, *stored;
  } cases[] = {
      {0, "a,b,c,d", "10=a,20=b,30=c,40=d"}, {1, "b,c,d,a", "20=b,30=c,40=d,10=a"},
      {3, "d,a,b,c", "40=d,10=a,20=b,30=c"}, // the last one
      {4, "a,b,c,d", "10=a,20=b,30=c,40=d"}, // the number of entries
      {6, "a,b,c,d", "10=a,20=b,30=c,40=d"}, {4000000000U, "a,b,c,d", "10=a,20=b,30=c,40=d"},
  };
  for (const auto& c : cases) {
    box->init(values, labels, -1, c.first);
    EXPECT_EQ(c.shown, shown()) << c.first;
    EXPECT_EQ(c.stored, stored()) << c.first;
    EXPECT_EQ(-1, box->get_active_row_number()) << c.first;
    EXPECT_EQ(-1, box->get_id()) << c.first;
  }
}

TEST_F(DropDown, OmitsLabelsWithoutAValue)
{
  box->init({10, 20}, labels, -1, 0);
  EXPECT_EQ("10=a,20=b", stored());
}

TEST_F(DropDown, TracesEachItemAtLevelTen)
{
  const auto fill = [&] { box->init({10, 20}, {"a", "b \"c\""}, -1, 1); };
  {
    const TraceLevel level(10);
    EXPECT_EQ("Adding item: 20 = \"b \"c\"\"\nAdding item: 10 = \"a\"\n", output_of(fill));
    EXPECT_EQ("", output_of([&] { box->init({{1, "one"}}, -1); }));
  }
  const TraceLevel level(9);
  EXPECT_EQ("", output_of(fill));
}

TEST_F(DropDown, ReadsTheChosenRow)
{
  box->init(values, labels, -1, 1);
  box->set_active(3);
  EXPECT_EQ(10, box->get_id());
  EXPECT_EQ("a", box->get_label());
  box->unset_active();
  EXPECT_EQ(-1, box->get_id());
  EXPECT_EQ("", box->get_label());
}

TEST_F(DropDown, ChoosesTheFirstRowWithALabel)
{
  box->init({{1, "one"}, {2, "twin"}, {3, "twin"}}, -1);
  box->set_label("twin");
  EXPECT_EQ(1, box->get_active_row_number());
  box->set_label("Twin");
  EXPECT_EQ(-1, box->get_active_row_number()) << "case counts";
  box->set_label("one");
  box->set_label("");
  EXPECT_EQ(-1, box->get_active_row_number()) << "no row is empty";
  box->init({{1, "one"}, {2, ""}}, -1);
  box->set_label("");
  EXPECT_EQ(1, box->get_active_row_number()) << "a row is empty";
}

TEST_F(DropDown, ChoosesTheFirstRowWithAnId)
{
  box->init({{1, "one"}, {2, "two"}, {2, "zwei"}, {0, "none"}}, 0);
  box->set_id(2);
  EXPECT_EQ("two", box->get_label());
  box->set_id(5);
  EXPECT_EQ(-1, box->get_active_row_number()) << "unknown";
  box->set_id(1);
  box->set_id(0);
  EXPECT_EQ(-1, box->get_active_row_number()) << "no_value means no choice";
}

TEST_F(DropDown, ReportsEveryChangeOfItsChoice)
{
  box->init(values, labels, -1, 0);
  changes = 0;
  box->set_id(20);
  EXPECT_EQ(1, changes);
  box->set_label("nowhere");
  EXPECT_EQ(2, changes);
}

TEST_F(DropDown, ShowsLabelsLiterally)
{
  box->init({{1, "Florida & <Gulf>"}}, -1);
  box->set_label("Florida & <Gulf>");
  EXPECT_EQ("Florida & <Gulf>", box->get_active_text());
}

TEST_F(DropDown, ReportsItsNameAndChoiceToScreenReaders)
{
  EXPECT_EQ("Search in", focused()->get_name());
  EXPECT_EQ(Atk::ROLE_COMBO_BOX, focused()->get_role());
  box->init(values, labels, -1, 0);
  box->set_id(20);
  EXPECT_EQ("b", focused()->get_description());
  box->unset_active();
  EXPECT_EQ("", focused()->get_description());
}
