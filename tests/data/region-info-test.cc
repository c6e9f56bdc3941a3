#include "data/region-info.h"
#include "support/data-set.h"
#include "support/output.h"

#include <memory>

#include "data-checks.h"

namespace {

using Texts = std::vector<std::string>;
using Numbers = std::vector<int>;

const std::string region_headings =
    "regioncode,subregioncode,regionname,subregionname,surveytypeid,surveytypename,"
    "hasabundance,hasfish,hasinverts,canhaveinverts,visible\n";

class RegionInfoTest : public testing::Test
{
protected:
  RegionInfoTest()
  {
    data.minimal(); // includes the fish tables of PAC and CAR
  }
  // Reads these rows and returns what was printed.
  std::string read(const std::string& rows)
  {
    data.file("region-info.csv", region_headings + rows);
    return output_of([this] { regions = std::make_unique<RegionInfo>(data.dir); });
  }

  DataSet data;
  std::unique_ptr<RegionInfo> regions;
};

} // namespace

TEST_F(RegionInfoTest, HasASurveyTypeForEachRow)
{
  EXPECT_EQ("", read("PAC,PNW,Pacific,Northwest,1,Fish,1,0,1,0,1\n"
                     "PAC,PNW,Pacific,Northwest,2,More,0,1,0,1,0\n"));
  ASSERT_TRUE(regions->is_valid());
  ASSERT_EQ(3U, regions->regions.size());
  const Region& one = regions->regions[1];
  EXPECT_EQ("PAC", one.regioncode);
  EXPECT_EQ("PNW", one.subregioncode);
  EXPECT_EQ("Pacific", one.regionname);
  EXPECT_EQ("Northwest", one.subregionname);
  EXPECT_EQ("Fish", one.surveytypename);
  EXPECT_EQ(1, one.surveytypeid);
  EXPECT_TRUE(one.hasabundance && one.hasinverts && one.visible);
  EXPECT_FALSE(one.hasfish || one.canhaveinverts);
  const Region& two = regions->regions[2];
  EXPECT_TRUE(two.hasfish && two.canhaveinverts);
  EXPECT_FALSE(two.hasabundance || two.hasinverts || two.visible);
}

TEST_F(RegionInfoTest, IsEmptyAndValidWithHeadingsAlone)
{
  read("");
  EXPECT_TRUE(regions->is_valid());
  EXPECT_TRUE(regions->regions.empty());
  EXPECT_TRUE(regions->region_fish.empty());
  EXPECT_TRUE(regions->subregion_names.empty());
  EXPECT_TRUE(regions->subregion_list.labels.empty());
}

TEST_F(RegionInfoTest, LeavesGapsBetweenIds)
{
  read("PAC,PNW,Pacific,Northwest,5,Five,1,1,0,1,1\nPAC,PNW,Pacific,Northwest,1,One,1,1,0,1,1\n");
  ASSERT_EQ(6U, regions->regions.size());
  for (const std::size_t gap : {0U, 2U, 3U, 4U}) {
    EXPECT_EQ(-1, regions->regions[gap].surveytypeid);
    EXPECT_EQ("", regions->regions[gap].surveytypename);
    EXPECT_FALSE(regions->regions[gap].visible);
  }
  EXPECT_EQ(Numbers({5, 1}), regions->subregion_ids["PNW"]) << "in file order";
  EXPECT_EQ(Texts({"Five", "One"}), bytes(regions->survey_types["PNW"].labels));
  EXPECT_EQ(Numbers({5, 1}), regions->survey_types["PNW"].values);
}

TEST_F(RegionInfoTest, TreatsAFlagAsSetOnlyIfItIsOne)
{
  const struct {
    const char* flag;
    bool set;
  } cases[] = {{"1", true},   {"0", false},  {"", false},   {"true", false},
               {"01", false}, {" 1", false}, {"11", false}, {"\"1\"", true}};
  for (const auto& c : cases) {
    read(std::string("PAC,PNW,Pacific,Northwest,1,Fish,") + c.flag + ",1,0,1,1\n");
    ASSERT_TRUE(regions->is_valid());
    EXPECT_EQ(c.set, regions->regions[1].hasabundance) << c.flag;
  }
}

TEST_F(RegionInfoTest, LetsASecondRowOfAnIdOverwriteTheFirst)
{
  read("PAC,PNW,Pacific,Northwest,1,First,1,1,0,1,1\nPAC,PNW,Pacific,Northwest,1,Second,1,1,0,1,"
       "1\n");
  EXPECT_EQ("Second", regions->regions[1].surveytypename);
  EXPECT_EQ(Numbers({1, 1}), regions->subregion_ids["PNW"]);
  EXPECT_EQ(Texts({"Second", "Second"}), bytes(regions->survey_types["PNW"].labels));
}

TEST_F(RegionInfoTest, SeparatesHiddenSurveyTypes)
{
  const TraceLevel level(1);
  EXPECT_EQ("Noting non-visible survey subtype 4 Old form\n",
            read("PAC,PNW,Pacific,Northwest,1,Fish,1,1,0,1,1\n"
                 "PAC,PNW,Pacific,Northwest,4,Old form,1,1,0,1,0\n"));
  EXPECT_EQ(Numbers({1}), regions->survey_types["PNW"].values);
  ASSERT_EQ(1U, regions->hidden_survey_types["PNW"].size());
  EXPECT_EQ("Old form", regions->hidden_survey_types["PNW"][4].raw());
}

TEST_F(RegionInfoTest, DoesNotReportHiddenSurveyTypesAtLevelZero)
{
  EXPECT_EQ("", read("PAC,PNW,Pacific,Northwest,4,Old form,1,1,0,1,0\n"));
}

TEST_F(RegionInfoTest, DoesNotOfferASubregionWhoseTypesAreAllHidden)
{
  read("PAC,PNW,Pacific,Northwest,1,Fish,1,1,0,1,0\nCAR,FLA,Caribbean,Florida,2,Fish,1,1,0,1,1\n");
  EXPECT_EQ(1U, regions->survey_types.count("PNW"));
  EXPECT_TRUE(regions->survey_types["PNW"].labels.empty());
  EXPECT_EQ("Northwest", regions->subregion_names["PNW"].raw());
  EXPECT_EQ("PNW", regions->subregion_codes["Northwest"].raw());
  EXPECT_EQ("PAC", regions->subregion_regions["PNW"].raw());
  EXPECT_EQ(Texts({"Florida"}), bytes(regions->subregion_list.labels));
  EXPECT_EQ(Numbers({0}), regions->subregion_list.values);
  EXPECT_TRUE(regions->region_fish["PAC"].initialised) << "its region is still read";
}

TEST_F(RegionInfoTest, ListsSubregionsByTheirCodes)
{
  read("PAC,PNW,Pacific,A last one,1,Fish,1,1,0,1,1\n"
       "CAR,FLA,Caribbean,B middle,2,Fish,1,1,0,1,1\n"
       "PAC,CAL,Pacific,C first,3,Fish,1,1,0,1,1\n");
  EXPECT_EQ(Texts({"C first", "B middle", "A last one"}), bytes(regions->subregion_list.labels));
  EXPECT_EQ(Numbers({0, 0, 0}), regions->subregion_list.values);
  EXPECT_EQ(Texts({"PAC", "CAR"}), bytes(regions->region_codes))
      << "each once, in the order of their first rows";
  EXPECT_EQ(2U, regions->region_fish.size());
}

TEST_F(RegionInfoTest, TakesTheNameOfASubregionFromItsFirstRow)
{
  read("PAC,PNW,Pacific,Northwest,7,Fish,1,1,0,1,1\nCAR,PNW,Other,Elsewhere,2,Fish,1,1,0,1,1\n");
  EXPECT_EQ("Northwest", regions->subregion_names["PNW"].raw());
  EXPECT_EQ("PAC", regions->subregion_regions["PNW"].raw());
  EXPECT_EQ(0U, regions->subregion_codes.count("Elsewhere"));
  EXPECT_EQ(0U, regions->region_fish.count("CAR"));
}

TEST_F(RegionInfoTest, UsesTheCodeOfTheLaterOfTwoSubregionsWithTheSameName)
{
  read("PAC,PNW,Pacific,Coast,1,Fish,1,1,0,1,1\nPAC,CAL,Pacific,Coast,2,Fish,1,1,0,1,1\n");
  EXPECT_EQ(1U, regions->subregion_codes.size());
  EXPECT_EQ("PNW", regions->subregion_codes["Coast"].raw());
}

TEST_F(RegionInfoTest, FailsIfTheFishTablesOfAnyRegionFail)
{
  data.remove("CAR-geog.csv");
  EXPECT_EQ("Failed to open " + data.dir + "CAR-geog.csv!\n",
            read("PAC,PNW,Pacific,Northwest,1,Fish,1,1,0,1,1\n"
                 "CAR,FLA,Caribbean,Florida,2,Fish,1,1,0,1,0\n"));
  EXPECT_FALSE(regions->is_valid());
}

TEST_F(RegionInfoTest, IsInvalidWithoutACompleteFile)
{
  data.remove("region-info.csv");
  output_of([&] { EXPECT_FALSE(RegionInfo(data.dir).is_valid()); });
  data.file("region-info.csv", "regioncode,subregioncode\n");
  const std::string out = output_of([&] { EXPECT_FALSE(RegionInfo(data.dir).is_valid()); });
  EXPECT_NE(std::string::npos, out.find("missing heading \"visible\"\n")) << out;
  EXPECT_NE("", reported_by([this] { read("PAC,PNW,Pacific,Northwest,1,Fish,1,1,0,1\n"); }));
  EXPECT_FALSE(regions->is_valid());
}

TEST_F(RegionInfoTest, SkipsSurveyTypesWhoseIdCannotIndexATable)
{
  const std::string out = read("PAC,PNW,Pacific,Northwest,-1,Bad,1,1,0,1,1\n"
                               "PAC,PNW,Pacific,Northwest,100000,Bad,1,1,0,1,1\n"
                               "PAC,CAL,Pacific,California,2,Good,1,1,0,1,1\n");
  ASSERT_TRUE(regions->is_valid());
  EXPECT_EQ(3U, regions->regions.size());
  EXPECT_EQ(0U, regions->subregion_ids.count("PNW"));
  EXPECT_NE(std::string::npos, out.find("surveytypeid -1 ")) << out;
  EXPECT_NE(std::string::npos, out.find("surveytypeid 100000 ")) << out;
}

TEST_F(RegionInfoTest, TracesARowAtLevelFiveAndCannotReadASecond)
{
  const TraceLevel level(5);
  std::string out;
  const std::string report = reported_by([&] {
    out = read(
        "PAC,PNW,Pacific,Northwest,1,Fish,1,0,1,0,1\nPAC,PNW,Pacific,Northwest,2,b,1,1,0,1,1\n");
  });
  EXPECT_EQ("Region: PAC/PNW: Fish, id = 1, has_abund=1, has_fish=0 (PAC), has_inv=1, "
            "can_have_inv=0, vis=1\n",
            out);
  EXPECT_NE(std::string::npos, report.find("line 3 has 11 columns rather than 12")) << report;
  EXPECT_FALSE(regions->is_valid());
}

TEST_F(RegionInfoTest, TracesEachFieldAtLevelTen)
{
  const TraceLevel level(10);
  const std::string out = read("PAC,PNW,Pacific,Northwest,1,Fish,1,0,1,0,1\n");
  EXPECT_TRUE(regions->is_valid()) << "one row can be read";
  for (const char* line :
       {"\nid 1:\n", "    has_fish col 0 = \"PAC\"\n", "    hasfish col 7 = \"0\"\n",
        "    surveytypename col 5 = \"Fish\"\n", "    visible col 10 = \"1\"\n"})
    EXPECT_NE(std::string::npos, out.find(line)) << line << out;
  EXPECT_NE(std::string::npos, out.find("\"\n\nStarting to read"))
      << "an empty line follows" << out;
}
