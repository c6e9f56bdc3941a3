#include "data/habitat-info.h"
#include "support/data-set.h"
#include "support/output.h"

#include <memory>

#include "data-checks.h"

namespace {

using Texts = std::vector<std::string>;
using Numbers = std::vector<int>;

class HabitatInfoTest : public testing::Test
{
protected:
  // Reads these rows and returns what was printed.
  std::string read(const std::string& habitat_rows, const std::string& region_rows)
  {
    data.file("habitat.csv", "habitatid,habitatname,habitatdescr\n" + habitat_rows);
    data.file("habitatregion.csv", "regioncode,habitat,habitatid\n" + region_rows);
    return output_of([this] { habitats = std::make_unique<HabitatInfo>(data.dir); });
  }
  Numbers ids(const char* region) { return habitats->region_habitat_ids[region]; }
  Texts labels(const char* region) { return bytes(habitats->region_habitats[region].labels); }
  Numbers codes(const char* region) { return habitats->region_habitats[region].values; }

  DataSet data;
  std::unique_ptr<HabitatInfo> habitats;
  const std::string three = "1,Kelp,Forest\n2,Wall,Steep\n3,Reef,Coral\n";
};

} // namespace

TEST_F(HabitatInfoTest, HasNamesAndDescriptionsById)
{
  EXPECT_EQ("", read("2,Wall,Steep\n0,Sand,\n", ""));
  EXPECT_TRUE(habitats->is_valid());
  EXPECT_EQ(Texts({"Sand", "", "Wall"}), bytes(habitats->names));
  EXPECT_EQ(Texts({"", "", "Steep"}), bytes(habitats->descriptions));
}

TEST_F(HabitatInfoTest, OffersARegionItsHabitatsByTheRegionsCodes)
{
  EXPECT_EQ("", read(three, "PAC,3,2\nPAC,1,3\nCAR,1,1\n"));
  EXPECT_EQ(Numbers({-1, 3, -1, 2}), ids("PAC"));
  EXPECT_EQ(Texts({"Reef", "Wall"}), labels("PAC"));
  EXPECT_EQ(Numbers({1, 3}), codes("PAC"));
  EXPECT_EQ(Texts({"Kelp"}), labels("CAR"));
  EXPECT_EQ(2U, habitats->region_habitats.size());
}

TEST_F(HabitatInfoTest, KeepsTheLastRowOfACode)
{
  read(three, "PAC,1,2\nPAC,1,3\nPAC,0,1\n");
  EXPECT_EQ(Numbers({1, 3}), ids("PAC"));
  EXPECT_EQ(Texts({"Kelp", "Reef"}), labels("PAC"));
}

TEST_F(HabitatInfoTest, DropsHabitatsThatAreNotDefined)
{
  EXPECT_EQ("Region CAR habitat id 99999 is not defined!\nRegion PAC habitat id 4 is not defined!\n"
            "Region PAC habitat id 1 is not defined!\n",
            read("2,Wall,Steep\n", "PAC,1,2\nPAC,2,4\nPAC,3,1\nCAR,1,99999\n"));
  EXPECT_TRUE(habitats->is_valid());
  EXPECT_EQ(Numbers({-1, 2, -1, -1}), ids("PAC"));
  EXPECT_EQ(Texts({"Wall"}), labels("PAC"));
  EXPECT_EQ(Numbers({1}), codes("PAC"));
  EXPECT_EQ(Numbers({-1, -1}), ids("CAR"));
  EXPECT_EQ(Texts(), labels("CAR"));
}

TEST_F(HabitatInfoTest, SkipsIdsAndCodesThatCannotIndexATable)
{
  const std::string out =
      read(three + "-1,Bad,Bad\n100000,Bad,Bad\n", "PAC,-1,1\nPAC,100000,1\nPAC,1,-7\nPAC,2,2\n");
  EXPECT_TRUE(habitats->is_valid());
  EXPECT_EQ(4U, habitats->names.size());
  EXPECT_EQ(Numbers({-1, -1, 2}), ids("PAC"));
  EXPECT_EQ(Numbers({2}), codes("PAC"));
  for (const char* part :
       {"habitat -1 ", "habitat 100000 ", "habitatid -7 ", "habitatid -1 ", "habitatid 100000 "})
    EXPECT_NE(std::string::npos, out.find(part)) << part << out;
}

TEST_F(HabitatInfoTest, LimitsTheMemoryOfGaps)
{
  std::string rows;
  for (int i = 0; i < 12; ++i)
    rows += "R" + std::to_string(i) + ",99999,1\n";
  const std::string out = read(three, rows + "PAC,1,1\n");
  EXPECT_TRUE(habitats->is_valid());
  EXPECT_EQ(Numbers({99'999}), codes("R9"));
  EXPECT_EQ(Numbers(), codes("R10"));
  EXPECT_EQ(Numbers({1}), codes("PAC")) << "the later rows are read";
  EXPECT_NE(std::string::npos, out.find("line 12 is skipped")) << out;
}

TEST_F(HabitatInfoTest, DoesNotOpenTheHabitatsIfTheRegionsFail)
{
  data.file("habitat.csv", "nothing\n");
  EXPECT_EQ("Failed to open " + data.dir + "habitatregion.csv!\n",
            output_of([&] { EXPECT_FALSE(HabitatInfo(data.dir).is_valid()); }));
}

TEST_F(HabitatInfoTest, IsInvalidWithoutBothFilesComplete)
{
  data.file("habitatregion.csv", "regioncode,habitat,habitatid\n");
  EXPECT_EQ("Failed to open " + data.dir + "habitat.csv!\n",
            output_of([&] { EXPECT_FALSE(HabitatInfo(data.dir).is_valid()); }));
  data.file("habitat.csv", "habitatid\n");
  EXPECT_EQ("missing heading \"habitatname\"\nmissing heading \"habitatdescr\"\n",
            output_of([&] { EXPECT_FALSE(HabitatInfo(data.dir).is_valid()); }));
  data.file("habitatregion.csv", "habitatid\n");
  EXPECT_EQ("missing heading \"regioncode\"\nmissing heading \"habitat\"\n",
            output_of([&] { EXPECT_FALSE(HabitatInfo(data.dir).is_valid()); }));
  EXPECT_NE("", reported_by([this] { read(three, "PAC,1\n"); }));
  EXPECT_FALSE(habitats->is_valid());
  EXPECT_NE("", reported_by([this] { read("1,Kelp\n", "PAC,1,1\n"); }));
  EXPECT_FALSE(habitats->is_valid());
}
