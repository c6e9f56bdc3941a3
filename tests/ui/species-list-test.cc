#include "core/report.h"
#include "support/output.h"
#include "ui/species-list.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

RegionFishInfo::Species species(int id, const char* common, const char* family, int invertebrate)
{
  RegionFishInfo::Species record;
  record.speciesid = id;
  record.commonname = common;
  record.familyid = family;
  record.invertebratetype = static_cast<std::uint8_t>(invertebrate);
  return record;
}

// Fish 2, 3 and 7, invertebrates 5 and 6; 0, 1 and 4 are gaps.
RegionFishInfo small_region()
{
  RegionFishInfo fish;
  fish.families["F1"] = {"F1", "Cottidae", "Sculpins"};
  fish.families["F2"] = {"F2", "Hexagrammidae", "Greenlings"};
  fish.families["F3"] = {"F3", "Asteriidae", "Sea Stars"};
  fish.species.resize(8);
  fish.species[2] = species(2, "Longfin Sculpin", "F1", 0);
  fish.species[3] = species(3, "Lingcod", "F2", 0);
  fish.species[5] = species(5, "Ochre Star", "F3", 1);
  fish.species[6] = species(6, "Mottled Star", "F3", 2);
  fish.species[7] = species(7, "Kelp Greenling", "F2", 0);
  return fish;
}

std::vector<SpeciesListItem> sorted_species(RegionFishInfo& fish, const IdSet& view,
                                            ShownKinds shown)
{
  SpeciesOrder order;
  return all_species_list(fish, view, shown, order);
}

// Returns "id/family" for each species, with a star after species of the view.
std::string as_text(const std::vector<SpeciesListItem>& list)
{
  std::string text;
  for (const auto& item : list)
    text += (text.empty() ? "" : " ") + std::to_string(item.species->speciesid) + "/" +
            item.family->id + (item.in_view ? "*" : "");
  return text;
}

constexpr ShownKinds nothing{false, false};
constexpr ShownKinds fish_only{true, false};
constexpr ShownKinds inverts_only{false, true};
constexpr ShownKinds everything{true, true};

} // namespace

TEST(SpeciesListItem, IsOrderedByFamilyAndThenByCommonName)
{
  const RegionFishInfo::Family angels{"9", "", "Angelfishes"};
  const RegionFishInfo::Family snappers{"1", "", "Snappers"};
  const RegionFishInfo::Family more_snappers{"2", "Other", "Snappers"};
  const auto gray = species(1, "Gray", "", 0);
  const auto lane = species(2, "Lane", "", 0);
  const struct {
    const char* why;
    SpeciesListItem first;
    SpeciesListItem second;
    bool expected;
  } cases[] = {
      {"family name", {&lane, &angels, false}, {&gray, &snappers, true}, true},
      {"family name, reversed", {&gray, &snappers, true}, {&lane, &angels, false}, false},
      {"species name", {&gray, &snappers, false}, {&lane, &snappers, false}, true},
      {"species name, reversed", {&lane, &snappers, false}, {&gray, &snappers, false}, false},
      {"equal family names", {&gray, &snappers, false}, {&lane, &more_snappers, false}, true},
      {"not by id of the family", {&lane, &snappers, false}, {&gray, &more_snappers, false}, false},
      {"the same", {&gray, &snappers, true}, {&gray, &snappers, false}, false},
  };
  for (const auto& c : cases)
    EXPECT_EQ(c.expected, c.first < c.second) << c.why;
}

// Tests names that a locale may treat as equal or sort in its own order.
TEST(SpeciesOrder, SortsLikeTheComparisonOfItems)
{
  const char* const names[] = {
      "Gray",       "gray",       "GRAY",     "Gray ",    " Gray",
      "Gr\u00e4y",  "Gra\u0308y", "Graey",    "Gr-ay",    "Gr,ay",
      "Gray, B",    "Gray B",     "Gray-B",   "I",        "i",
      "\u0130",     "\u0131",     "Ish",      "\u0130sh", "z",
      "Zebra",      "\u00e5l",    "\u00c5l",  "A\u030al", "\u00d1and\u00fa",
      "nandu",      "\u3042",     "\u30a2",   "\uff71",   "\u9b5a",
      "\U0001f41f", "",           "<i>x",     "x & y",    "10",
      "9",          "\u2460",     "\ufb01sh", "fish",     "fi-sh",
      "e\u0301",    "\u00e9",
  };
  RegionFishInfo fish;
  std::vector<RegionFishInfo::Family> families;
  for (const char* name : names) {
    const int id = static_cast<int>(fish.species.size());
    fish.species.push_back(species(id, name, "", 0));
    families.push_back({std::to_string(id), "", name});
  }

  std::vector<SpeciesListItem> list; // each species and family several times, mixed
  for (std::size_t i = 0; i < 4 * families.size(); ++i)
    list.push_back(
        {&fish.species[i * 5 % families.size()], &families[i * 11 / 2 % families.size()], false});
  SpeciesOrder order;
  const auto check = [&](const char* what) {
    auto expected = list;
    std::sort(expected.begin(), expected.end());
    order.sort(list, fish);
    EXPECT_EQ(as_text(expected), as_text(list)) << what;
  };
  check("many families");
  check("sorted before");
  for (auto& item : list)
    item.family = &families.front();
  check("one family");
  list.resize(7);
  check("a few species");
  list.clear();
  check("none");
}

TEST(SpeciesOrder, IsThatOfTheCurrentRegion)
{
  RegionFishInfo one = small_region();
  RegionFishInfo other = small_region();
  std::swap(other.species[3].commonname, other.species[7].commonname);
  SpeciesOrder order;
  for (int again = 0; again < 2; ++again) {
    EXPECT_EQ("7/F2 3/F2 2/F1", as_text(all_species_list(one, {}, fish_only, order)));
    EXPECT_EQ("3/F2 7/F2 2/F1", as_text(all_species_list(other, {}, fish_only, order)));
  }
  EXPECT_EQ("6/F3* 5/F3*", as_text(all_species_list(one, {5, 6}, inverts_only, order)))
      << "kinds that were not sorted before";
}

TEST(AllSpeciesList, HasAllFishButOnlyTheViewsInvertebrates)
{
  const struct {
    const char* why;
    IdSet view;
    ShownKinds shown;
    const char* expected;
  } cases[] = {
      {"fish of a view with invertebrates", {2, 3, 5}, fish_only, "7/F2 3/F2* 2/F1*"},
      {"both kinds", {2, 3, 5}, everything, "7/F2 3/F2* 2/F1* 5/F3*"},
      {"invertebrates only", {2, 3, 5}, inverts_only, "5/F3*"},
      {"both invertebrates", {5, 6}, inverts_only, "6/F3* 5/F3*"},
      {"no view", {}, everything, "7/F2 3/F2 2/F1"},
      {"neither kind", {2, 3, 5}, nothing, ""},
      {"ids that the region lacks", {0, 4, 99, -1}, fish_only, "7/F2 3/F2 2/F1"},
  };
  for (const auto& c : cases) {
    RegionFishInfo fish = small_region();
    EXPECT_EQ(c.expected, as_text(sorted_species(fish, c.view, c.shown))) << c.why;
  }
}

TEST(AllSpeciesList, PutsSpeciesWithoutAKnownFamilyFirst)
{
  RegionFishInfo fish = small_region();
  fish.species[3].familyid = "F9";
  EXPECT_EQ("3/ 7/F2 2/F1", as_text(sorted_species(fish, {}, fish_only)));
  EXPECT_EQ(1u, fish.families.count("F9"));
}

TEST(AllSpeciesList, OfAnEmptyRegionIsEmpty)
{
  RegionFishInfo fish;
  EXPECT_TRUE(sorted_species(fish, {1}, everything).empty());
}

TEST(ViewSpeciesList, KeepsTheOrderAndTheFamiliesOfTheView)
{
  const struct {
    const char* why;
    std::vector<SpeciesViews::ViewSpecies> view;
    ShownKinds shown;
    const char* expected;
  } cases[] = {
      {"in the order of the file", {{3, "F2"}, {2, "F1"}}, fish_only, "3/F2* 2/F1*"},
      {"under another family", {{3, "F1"}, {2, "F3"}}, fish_only, "3/F1* 2/F3*"},
      {"returning to a family", {{3, "F2"}, {2, "F1"}, {7, "F2"}}, fish_only, "3/F2* 2/F1* 7/F2*"},
      {"twice", {{3, "F2"}, {3, "F2"}}, fish_only, "3/F2* 3/F2*"},
      {"unknown family", {{3, "F9"}}, fish_only, "3/*"},
      {"fish of both kinds", {{3, "F2"}, {5, "F3"}}, fish_only, "3/F2*"},
      {"invertebrates of both kinds", {{3, "F2"}, {5, "F3"}}, inverts_only, "5/F3*"},
      {"both kinds", {{5, "F3"}, {3, "F2"}}, everything, "5/F3* 3/F2*"},
      {"neither kind", {{5, "F3"}, {3, "F2"}}, nothing, ""},
      {"empty", {}, everything, ""},
  };
  for (const auto& c : cases) {
    RegionFishInfo fish = small_region();
    EXPECT_EQ(c.expected, as_text(view_species_list(fish, c.view, c.shown))) << c.why;
  }
}

TEST(ViewSpeciesList, OmitsAndReportsSpeciesThatTheRegionLacks)
{
  RegionFishInfo fish = small_region();
  fish.region = "PAC";
  for (const int id : {8, 99999, -1, 4}) {
    testing::internal::CaptureStdout();
    const auto list = view_species_list(fish, {{id, "F1"}, {3, "F2"}}, everything);
    EXPECT_EQ("Warning: region PAC has no species " + std::to_string(id) + ", which a view lists\n",
              testing::internal::GetCapturedStdout());
    EXPECT_EQ("3/F2*", as_text(list)) << id;
  }
  const auto complain = [&] { view_species_list(fish, {{8, "F1"}}, everything); };
  EXPECT_NE("", output_of(-1, complain));
  EXPECT_EQ("", output_of(-2, complain));
}

TEST(SpeciesLists, TraceTheirContents)
{
  RegionFishInfo fish = small_region();
  const auto traced = [&](int level, auto&& make_list) {
    debug_level = level;
    testing::internal::CaptureStdout();
    make_list();
    debug_level = 0;
    return testing::internal::GetCapturedStdout();
  };
  const auto all = [&] { sorted_species(fish, {3}, fish_only); };
  const auto of_view = [&] { view_species_list(fish, {{3, "F1"}}, fish_only); };
  const std::string sorted = "post-sort, unlisted species_list has:\n"
                             "    7 Kelp Greenling (family Greenlings)\n"
                             "    3 Lingcod (family Greenlings)\n"
                             "    2 Longfin Sculpin (family Sculpins)\n";

  EXPECT_EQ("", traced(29, all));
  EXPECT_EQ(sorted, traced(30, all));
  EXPECT_EQ("unlisted: 2 Longfin Sculpin (family Sculpins)\n"
            "unlisted: 3 Lingcod (family Greenlings)\n"
            "unlisted: 7 Kelp Greenling (family Greenlings)\n" +
                sorted,
            traced(40, all));
  EXPECT_EQ("", traced(2, of_view));
  EXPECT_EQ("0: 3 (Lingcod) F1\n", traced(3, of_view));
  EXPECT_EQ("0: 3 (Lingcod) F1\nlisted species_list has:\n    3 Lingcod (family Sculpins)\n",
            traced(30, of_view));
}
