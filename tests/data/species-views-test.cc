#include "data/region-info.h"
#include "data/species-view-info.h"
#include "data/species-views.h"
#include "support/data-set.h"
#include "support/output.h"

#include <memory>

#include "data-checks.h"

namespace {

using Texts = std::vector<std::string>;
using Numbers = std::vector<int>;

class SpeciesViewInfoTest : public testing::Test
{
protected:
  SpeciesViewInfoTest()
  {
    data.minimal();
    regions = std::make_unique<RegionInfo>(data.dir);
  }
  // Reads these rows and returns what was printed.
  std::string read(const std::string& rows)
  {
    data.file("species-view-definitions.csv", "viewid,subregioncode,viewname,isdefault\n" + rows);
    return output_of([this] { info = std::make_unique<SpeciesViewInfo>(data.dir, regions.get()); });
  }
  const SubregionInfo& subregion(const char* code) const { return regions->subregions.at(code); }

  DataSet data;
  std::unique_ptr<RegionInfo> regions;
  std::unique_ptr<SpeciesViewInfo> info;
};

class SpeciesViewsTest : public testing::Test
{
protected:
  // Reads these rows and returns what was printed.
  std::string read(const std::string& rows)
  {
    data.file("species-views.csv", "viewid,speciesid,familyid\n" + rows);
    return output_of([this] { views = std::make_unique<SpeciesViews>(data.dir); });
  }

  DataSet data;
  std::unique_ptr<SpeciesViews> views;
};

} // namespace

TEST_F(SpeciesViewInfoTest, GivesEachSubregionItsViews)
{
  EXPECT_EQ("", read("2,PNW,Common,1\n1,PNW,All,0\n4,CAL,Common,0\n"));
  EXPECT_TRUE(info->is_valid());
  ASSERT_EQ(2U, subregion("PNW").views.size());
  EXPECT_EQ(2, subregion("PNW").views[0].viewid);
  EXPECT_EQ("Common", subregion("PNW").views[0].viewname.raw());
  EXPECT_EQ(Texts({"Common", "All"}), bytes(subregion("PNW").view_choices.labels));
  EXPECT_EQ(Numbers({2, 1}), subregion("PNW").view_choices.values);
  EXPECT_EQ(2, subregion("PNW").default_view);
  EXPECT_EQ(-1, subregion("CAL").default_view);
  EXPECT_EQ(Texts({"", "PNW", "PNW", "", "CAL"}), info->view_subregions);
}

TEST_F(SpeciesViewInfoTest, TreatsAViewAsTheDefaultOnlyIfItsFlagIsOne)
{
  for (const char* flag : {"yes", "true", "01", "", "0", " 1"}) {
    regions->subregions.clear();
    read(std::string("1,PNW,Common,") + flag + "\n");
    EXPECT_EQ(-1, subregion("PNW").default_view) << flag;
  }
}

TEST_F(SpeciesViewInfoTest, KeepsTheLastDefault)
{
  read("1,PNW,One,1\n2,PNW,Two,1\n3,PNW,Three,0\n");
  EXPECT_EQ(2, subregion("PNW").default_view);
}

TEST_F(SpeciesViewInfoTest, KeepsViewsOfASubregionThatNoRegionHas)
{
  read("1,ATL,Common,1\n");
  EXPECT_EQ(1U, subregion("ATL").views.size());
  EXPECT_EQ(0U, regions->subregion_names.count("ATL"));
}

TEST_F(SpeciesViewInfoTest, SkipsViewsThatCannotIndexATable)
{
  const std::string out = read("-1,PNW,Bad,1\n100000,PNW,Bad,1\n1,PNW,Good,0\n");
  EXPECT_TRUE(info->is_valid());
  EXPECT_EQ(1U, subregion("PNW").views.size());
  EXPECT_EQ(-1, subregion("PNW").default_view);
  EXPECT_EQ(2U, info->view_subregions.size());
  EXPECT_NE(std::string::npos, out.find("viewid -1 ")) << out;
  EXPECT_NE(std::string::npos, out.find("viewid 100000 ")) << out;
}

TEST_F(SpeciesViewInfoTest, IsInvalidWithoutACompleteFile)
{
  const auto is_valid = [this] { return SpeciesViewInfo(data.dir, regions.get()).is_valid(); };
  data.remove("species-view-definitions.csv");
  EXPECT_NE("", output_of([&] { EXPECT_FALSE(is_valid()); }));
  data.file("species-view-definitions.csv", "viewid,viewname,isdefault\n");
  EXPECT_EQ("missing heading \"subregioncode\"\n", output_of([&] { EXPECT_FALSE(is_valid()); }));
  EXPECT_NE("", reported_by([this] { read("1,PNW,Common\n"); }));
  EXPECT_FALSE(info->is_valid());
}

TEST_F(SpeciesViewsTest, KeepTheSpeciesOfAViewInFileOrder)
{
  EXPECT_EQ("", read("1,11,F2\n1,10,F1\n3,7,F1\n"));
  EXPECT_TRUE(views->is_valid());
  ASSERT_EQ(4U, views->view_species.size());
  ASSERT_EQ(4U, views->view_species_sets.size());
  ASSERT_EQ(2U, views->view_species[1].size());
  EXPECT_EQ(11, views->view_species[1][0].speciesid);
  EXPECT_EQ("F2", views->view_species[1][0].familyid);
  EXPECT_EQ(10, views->view_species[1][1].speciesid);
  EXPECT_EQ(IdSet({10, 11}), views->view_species_sets[1]);
  EXPECT_TRUE(views->view_species[2].empty());
  EXPECT_TRUE(views->view_subregions.empty());
}

TEST_F(SpeciesViewsTest, ListADuplicateSpeciesTwice)
{
  read("1,10,F1\n1,12,F1\n1,10,F1\n1,12,F1\n");
  EXPECT_EQ(4U, views->species_of(1).size());
  EXPECT_EQ(IdSet({12, 10}), views->species_set(1));
  EXPECT_EQ(0U, views->species_set(1).count(11));
}

TEST_F(SpeciesViewsTest, AreEmptyForAMissingView)
{
  read("1,10,F1\n");
  EXPECT_EQ(1U, views->species_of(1).size());
  EXPECT_EQ(1U, views->species_set(1).count(10));
  for (const int id : {-1, 0, 2, 2'147'483'647, -2'147'483'647 - 1}) {
    EXPECT_TRUE(views->species_of(id).empty()) << id;
    EXPECT_TRUE(views->species_set(id).empty()) << id;
  }
}

TEST_F(SpeciesViewsTest, SkipIdsThatCannotIndexATable)
{
  const std::string out = read("-1,10,F1\n100000,10,F1\n1,-10,F1\n1,100000,F1\n1,10,F1\n");
  EXPECT_TRUE(views->is_valid());
  EXPECT_EQ(2U, views->view_species.size());
  EXPECT_EQ(1U, views->species_of(1).size());
  for (const char* part : {"viewid -1 ", "viewid 100000 ", "speciesid -10 ", "speciesid 100000 "})
    EXPECT_NE(std::string::npos, out.find(part)) << part << out;
}

TEST_F(SpeciesViewsTest, AreInvalidWithoutACompleteFile)
{
  EXPECT_EQ("Failed to open " + data.dir + "species-views.csv!\n",
            output_of([&] { EXPECT_FALSE(SpeciesViews(data.dir).is_valid()); }));
  data.file("species-views.csv", "speciesid,familyid\n");
  EXPECT_EQ("missing heading \"viewid\"\n",
            output_of([&] { EXPECT_FALSE(SpeciesViews(data.dir).is_valid()); }));
  EXPECT_NE("", reported_by([this] { read("1,2\n"); }));
  EXPECT_FALSE(views->is_valid());
}
