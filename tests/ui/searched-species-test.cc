#include "ui/plain-models.h"
#include "ui/searched-species.h"
#include "ui/species-columns.h"
#include "ui/species-search.h"

#include <gtest/gtest.h>
#include <gtkmm/main.h>

namespace {

// A store of two families: Snappers with 2 and 3, Angelfishes with 1.
class SearchedSpeciesTest : public testing::Test
{
public:
  SearchedSpeciesTest()
  {
    fill();
    searched.read_later(store, columns.col_id);
  }

  void fill()
  {
    GtkTreeIter snappers = add(nullptr, {-1, "Snappers", "Lutjanidae", "", 0, true, 0});
    add(&snappers, {3, "Dog & Cat Snapper", "Lutjanus JOCU", "PARGO JOCÚ", 0, false, 2});
    add(&snappers, {2, "Snapper, Gray", "Lutjanus griseus", "Pargo Prieto", 0, true, 0});
    GtkTreeIter angels = add(nullptr, {-1, "Angelfishes", "Pomacanthidae", "", 0, true, 0});
    add(&angels, {1, "ÄNGEL ÉÑŒ ΣΑΣ", "Pomacanthus", "", 0, true, 1});
  }
  GtkTreeIter add(GtkTreeIter* family, const SpeciesRow& content)
  {
    return columns.append(store, family, content);
  }
  // Returns the ids of the rows with all words in that column, as "3 2".
  std::string found(const char* text, const SearchedSpecies::NameColumn& column)
  {
    const auto words = split_search_words(Glib::ustring(text).lowercase());
    std::string ids;
    for (std::size_t row = 0; row < searched.ids().size(); ++row)
      if (contains_all_words(searched.names(column)[row], words))
        ids += (ids.empty() ? "" : " ") + std::to_string(searched.ids()[row]);
    return ids;
  }

  const bool is_ready = (Gtk::Main::init_gtkmm_internals(), true); // windows usually do this
  SpeciesTreeColumns columns{nullptr};
  Glib::RefPtr<Gtk::TreeStore> store = plain_store(columns);
  SearchedSpecies searched;
};

} // namespace

TEST_F(SearchedSpeciesTest, HaveTheOrderOfTheRows)
{
  EXPECT_EQ((std::vector<int>{-1, 3, 2, -1, 1}), searched.ids());
}

TEST_F(SearchedSpeciesTest, HaveTheNamesOfTheRowsInLowerCase)
{
  const SearchedSpecies::NameColumn* const name_columns[] = {
      &columns.col_common, &columns.col_scientific, &columns.col_both, &columns.col_spanish};
  for (const auto* column : name_columns) {
    std::vector<std::string> lowered;
    store->foreach_iter([&](const Gtk::TreeIter& row) {
      lowered.push_back(row->get_value(*column).lowercase());
      return false;
    });
    EXPECT_EQ(lowered, searched.names(*column)) << column->index();
  }
}

TEST_F(SearchedSpeciesTest, HaveMarkupAndLettersOfAllKindsInLowerCase)
{
  EXPECT_EQ("<span background=\"#c60\">dog &amp; cat snapper</span>",
            searched.names(columns.col_common)[1]);
  EXPECT_EQ("<span background=\"#9cf\">ängel éñœ σας</span>",
            searched.names(columns.col_common)[4]);
  EXPECT_EQ("<span weight=\"bold\" fgcolor=\"blue\">snappers <i>(lutjanidae)</i></span>",
            searched.names(columns.col_both)[0]);
  EXPECT_EQ("<span background=\"#c60\">pargo jocú</span>", searched.names(columns.col_spanish)[1]);
}

TEST_F(SearchedSpeciesTest, AreFoundByTheWordsOfAnyColumn)
{
  const struct {
    const char* text;
    const SearchedSpecies::NameColumn& column;
    const char* expected;
  } cases[] = {
      {"GRAY snap", columns.col_common, "2"},
      {"gray griseus", columns.col_common, ""},
      {"gray griseus", columns.col_both, "2"},
      {"cat snapper <i>(lut", columns.col_both, "3"},
      {"lutjan", columns.col_scientific, "-1 3 2"},
      {"JOCÚ", columns.col_spanish, "3"},
      {"jocu", columns.col_spanish, ""},
      {"Éñœ", columns.col_common, "1"},
      {"&", columns.col_common, "3"},
      {"amp", columns.col_common, "3"},
      {"background", columns.col_common, "3 1"},
      {"bold", columns.col_common, "-1 -1"},
      {"", columns.col_spanish, "-1 3 2 -1 1"}, // an empty word is in every text
      {"  ", columns.col_spanish, "-1 3 2 -1 1"},
      {" gray ", columns.col_common, "2"},
      {"zzz", columns.col_both, ""},
  };
  for (const auto& c : cases)
    EXPECT_EQ(c.expected, found(c.text, c.column)) << c.text;
}

TEST_F(SearchedSpeciesTest, AreReadOnceUntilTheStoreIsFilledAgain)
{
  EXPECT_EQ("2", found("gray", columns.col_common));
  const auto* const names = searched.names(columns.col_common).data();
  EXPECT_EQ(names, searched.names(columns.col_common).data());
  EXPECT_EQ(names,
            (searched.names(columns.col_spanish), searched.names(columns.col_common)).data());

  store->clear();
  add(nullptr, {-1, "Wrasses", "", "", 0, true, 0});
  searched.read_later(store, columns.col_id);
  EXPECT_EQ((std::vector<int>{-1}), searched.ids());
  EXPECT_EQ("", found("gray", columns.col_common));
  EXPECT_EQ("-1", found("wrasse", columns.col_common));
}

TEST_F(SearchedSpeciesTest, AreEmptyWithoutRowsOrStore)
{
  store->clear();
  EXPECT_TRUE(searched.ids().empty());
  EXPECT_TRUE(searched.names(columns.col_both).empty());
  SearchedSpecies nothing;
  EXPECT_TRUE(nothing.ids().empty());
  EXPECT_TRUE(nothing.names(columns.col_both).empty());
}
