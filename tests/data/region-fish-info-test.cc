#include "data/region-fish-info.h"
#include "support/data-set.h"
#include "support/output.h"

#include "data-checks.h"

namespace {

using Texts = std::vector<std::string>;

const std::string species_headings =
    "speciesid,scientificname,commonname,familyid,invertebratetype,rarefishind";

// A region, XYZ, with one family, no species and no zones unless a test adds some.
class RegionFishInfoTest : public testing::Test
{
protected:
  RegionFishInfoTest()
  {
    families("F1,Cottidae,Sculpins\n");
    species("");
    zones("");
  }
  void families(const std::string& rows) const
  {
    data.file("XYZ-family-info.csv", "familyid,scientificname,commonname\n" + rows);
  }
  void species(const std::string& rows) const
  {
    data.file("XYZ-species-info.csv", species_headings + "\n" + rows);
  }
  void species_with_spanish(const std::string& rows) const
  {
    data.file("XYZ-species-info.csv", species_headings + ",spanishname\n" + rows);
  }
  void zones(const std::string& rows) const { data.file("XYZ-geog.csv", "geogid,name\n" + rows); }

  // Reads the files, expects success, and returns what was printed.
  std::string read()
  {
    fish = RegionFishInfo();
    return output_of([this] { EXPECT_EQ(RET_SUCCESS, fish.init(data.dir, "XYZ")); });
  }

  DataSet data;
  RegionFishInfo fish;
};

} // namespace

TEST_F(RegionFishInfoTest, StartsEmpty)
{
  EXPECT_FALSE(fish.initialised);
  EXPECT_FALSE(fish.has_spanish);
  EXPECT_EQ(0, fish.max_rarefishind);
  EXPECT_TRUE(fish.region.empty());
  EXPECT_EQ(-1, RegionFishInfo::Species().speciesid);
}

TEST_F(RegionFishInfoTest, HasFamiliesSpeciesAndZones)
{
  families("F2,Hexagrammidae,Greenlings\nF1,Cottidae,Sculpins\n");
  species("3,Ophiodon elongatus,Lingcod,F2,0,1\n");
  zones("3,Washington\n3102,San Juan Islands\n31020003,Rosario Wall\n");
  EXPECT_EQ("", read());
  EXPECT_TRUE(fish.initialised);
  EXPECT_EQ("XYZ", fish.region);
  EXPECT_EQ(Texts({"F2", "F1"}), bytes(fish.family_ids));
  EXPECT_EQ("Hexagrammidae", fish.families["F2"].scientificname.raw());
  EXPECT_EQ("Greenlings", fish.families["F2"].commonname.raw());
  EXPECT_EQ("F2", fish.families["F2"].id);
  ASSERT_EQ(4U, fish.species.size());
  EXPECT_EQ("Ophiodon elongatus", fish.species[3].scientificname.raw());
  EXPECT_EQ("Lingcod", fish.species[3].commonname.raw());
  EXPECT_EQ("", fish.species[3].spanishname.raw());
  EXPECT_EQ("F2", fish.species[3].familyid);
  EXPECT_EQ(1, fish.species[3].rarefishind);
  EXPECT_EQ(0, fish.species[3].invertebratetype);
  EXPECT_EQ(std::vector<int>({3, 3102, 31020003}), fish.geog_ids);
  EXPECT_EQ("Rosario Wall", fish.geog_names[31020003].raw());
}

TEST_F(RegionFishInfoTest, FailsIfAnyOfItsFilesFails)
{
  const struct {
    const char* why;
    const char* name;
    const char* text; // null: no such file
  } cases[] = {
      {"no families", "XYZ-family-info.csv", nullptr},
      {"no species", "XYZ-species-info.csv", nullptr},
      {"no zones", "XYZ-geog.csv", nullptr},
      {"family heading", "XYZ-family-info.csv", "familyid,scientificname\n"},
      {"species heading", "XYZ-species-info.csv", "speciesid,spanishname\n"},
      {"zone heading", "XYZ-geog.csv", "geogid,zone\n"},
      {"family row", "XYZ-family-info.csv", "familyid,scientificname,commonname\nF1\n"},
      {"zone row", "XYZ-geog.csv", "geogid,name\n1\n"},
  };
  for (const auto& c : cases) {
    families("");
    species("");
    zones("");
    if (c.text)
      data.file(c.name, c.text);
    else
      data.remove(c.name);
    RegionFishInfo info;
    reported_by(
        [&] { output_of([&] { EXPECT_EQ(RET_FAILURE, info.init(data.dir, "XYZ")) << c.why; }); });
    EXPECT_FALSE(info.initialised) << c.why;
  }
}

TEST_F(RegionFishInfoTest, ListsADuplicateFamilyTwice)
{
  families("F1,Cottidae,Sculpins\nF1,Cottoidea,Bullheads\n");
  read();
  EXPECT_EQ(Texts({"F1", "F1"}), bytes(fish.family_ids));
  EXPECT_EQ("Bullheads", fish.families["F1"].commonname.raw());
}

TEST_F(RegionFishInfoTest, GivesANameToAFamilyThatHasNone)
{
  families("F1,,\nF2,Cottidae,\n");
  EXPECT_EQ("Warning: XYZ family F1 has no name!\n", read());
  EXPECT_EQ("Unnamed family F1", fish.families["F1"].commonname.raw());
  EXPECT_EQ("", fish.families["F2"].commonname.raw()) << "it has a scientific name";
}

TEST_F(RegionFishInfoTest, GivesACommonNameToAFamilyThatASpeciesNeeds)
{
  families("F2,Cottidae,\n");
  species("1,a,b,F2,0,0\n2,a,b,F2,0,0\n");
  EXPECT_EQ("Region XYZ family id F2 has no name!\n", read());
  EXPECT_EQ("Unnamed family (F2)", fish.families["F2"].commonname.raw());
}

TEST_F(RegionFishInfoTest, CreatesAFamilyThatNoFileDefines)
{
  species("1,a,b,F9,0,0\n2,a,b,F9,0,0\n");
  EXPECT_EQ("Region XYZ family id F9 is not defined!\nRegion XYZ family id F9 has no name!\n",
            read());
  EXPECT_EQ("Undefined family F9", fish.families["F9"].id);
  EXPECT_EQ("Unnamed family (Undefined family F9)", fish.families["F9"].commonname.raw());
  EXPECT_EQ("F9", fish.species[2].familyid);
  EXPECT_EQ(Texts({"F1"}), bytes(fish.family_ids));
}

TEST_F(RegionFishInfoTest, GivesAllSpeciesWithoutAFamilyTheSameOne)
{
  species("1,a,b,,0,0\n2,a,b,,0,0\n");
  EXPECT_EQ("Region XYZ species id 1 has no family!\n"
            "Region XYZ family id (empty) is not defined!\n"
            "Region XYZ family id (empty) has no name!\n"
            "Region XYZ species id 2 has no family!\n",
            read());
  EXPECT_EQ("(empty)", fish.species[1].familyid);
  EXPECT_EQ("(empty)", fish.species[2].familyid);
}

TEST_F(RegionFishInfoTest, DoesNotReportAMissingFamilyOfAnInvertebrate)
{
  species("1,a,b,,1,0\n2,a,b,F9,2,0\n");
  EXPECT_EQ("", read());
  EXPECT_EQ("(empty)", fish.species[1].familyid);
  EXPECT_EQ("Unnamed family (Undefined family (empty))", fish.families["(empty)"].commonname.raw());
  EXPECT_EQ("Unnamed family (Undefined family F9)", fish.families["F9"].commonname.raw());
}

TEST_F(RegionFishInfoTest, ComplainsAboutFamiliesDownToLevelMinusOne)
{
  species("1,a,b,,0,0\n2,a,b,F9,0,0\n");
  {
    const TraceLevel level(-1);
    EXPECT_NE("", read());
  }
  const TraceLevel level(-2);
  EXPECT_EQ("", read());
}

TEST_F(RegionFishInfoTest, LeavesGapsBetweenIds)
{
  species("1,a,b,F1,0,0\n4,c,d,F1,0,0\n");
  read();
  ASSERT_EQ(5U, fish.species.size());
  for (const int gap : {0, 2, 3}) {
    EXPECT_EQ(-1, fish.species[static_cast<std::size_t>(gap)].speciesid);
    EXPECT_EQ(nullptr, fish.find_species(gap));
  }
}

TEST_F(RegionFishInfoTest, FindsOnlySpeciesThatItHas)
{
  species("1,a,b,F1,0,0\n");
  read();
  ASSERT_NE(nullptr, fish.find_species(1));
  EXPECT_EQ(1, fish.find_species(1)->speciesid);
  for (const int id : {-1, 0, 2, 99'999, 2'147'483'647, -2'147'483'647 - 1})
    EXPECT_EQ(nullptr, fish.find_species(id)) << id;
}

TEST_F(RegionFishInfoTest, SkipsSpeciesWhoseIdCannotIndexATable)
{
  species("-1,a,b,F1,0,0\n100000,a,b,F1,0,0\n99999999999999999999,a,b,F1,0,0\n7,a,b,F1,0,0\n");
  const std::string out = read();
  EXPECT_EQ(8U, fish.species.size());
  EXPECT_NE(nullptr, fish.find_species(7));
  for (const char* line : {"line 2 ", "line 3 ", "line 4 "})
    EXPECT_NE(std::string::npos, out.find(line)) << out;
  EXPECT_EQ(std::string::npos, out.find("line 5 ")) << out;
}

TEST_F(RegionFishInfoTest, ReadsAnIdThatIsNotANumberAsZero)
{
  species("one,a,b,F1,0,0\n");
  EXPECT_EQ("", read());
  EXPECT_NE(nullptr, fish.find_species(0));
}

TEST_F(RegionFishInfoTest, KeepsRarityAndInvertebrateTypeInEightBits)
{
  species("1,a,b,F1,257,300\n2,a,b,F1,-1,200\n3,a,b,F1,256,2\n");
  read();
  EXPECT_EQ(44, fish.species[1].rarefishind);
  EXPECT_EQ(1, fish.species[1].invertebratetype);
  EXPECT_EQ(-56, fish.species[2].rarefishind);
  EXPECT_EQ(255, fish.species[2].invertebratetype);
  EXPECT_EQ(0, fish.species[3].invertebratetype);
  EXPECT_EQ(44, fish.max_rarefishind);
}

TEST_F(RegionFishInfoTest, ReportsNumbersThatDoNotFitTheirTypeDownToLevelMinusOne)
{
  families("F1,,Sculpins\n");
  species("1,,,F1,256,300\n2,,,F1,255,127\n3,,,F1,0,-129\n4,,,F1,0,-128\n");
  zones("99999999999,Far\n2147483647,Near\n");
  const std::string dir = data.dir;
  const std::string expected =
      dir + "XYZ-species-info.csv line 2: invertebratetype 256 does not fit and is kept as 0\n" +
      dir + "XYZ-species-info.csv line 2: rarefishind 300 does not fit and is kept as 44\n" + dir +
      "XYZ-species-info.csv line 4: rarefishind -129 does not fit and is kept as 127\n" + dir +
      "XYZ-geog.csv line 2: geogid 99999999999 does not fit and is kept as 2147483647\n";
  {
    const TraceLevel level(-1);
    EXPECT_EQ(expected, read());
  }
  const TraceLevel level(-2);
  fish = RegionFishInfo();
  EXPECT_EQ("", read());
}

TEST_F(RegionFishInfoTest, NeverTreatsANegativeRarityAsTheLargest)
{
  species("1,a,b,F1,0,200\n");
  read();
  EXPECT_EQ(0, fish.max_rarefishind);
}

TEST_F(RegionFishInfoTest, HasSpanishNamesIfTheFileHasTheColumn)
{
  species("1,a,b,F1,0,0\n");
  read();
  EXPECT_FALSE(fish.has_spanish) << "no column";
  species_with_spanish("1,a,b,F1,0,0,\n");
  read();
  EXPECT_TRUE(fish.has_spanish) << "an empty column";
  species_with_spanish("");
  read();
  EXPECT_FALSE(fish.has_spanish) << "a column without a row";
  species_with_spanish("1,a,b,F1,0,0,jocú\n");
  read();
  EXPECT_EQ("jocú", fish.species[1].spanishname.raw());
}

TEST_F(RegionFishInfoTest, AcceptsDuplicateColumnsOfSpanishNames)
{
  data.file("XYZ-species-info.csv",
            species_headings + ",spanishname,spanishname\n1,a,b,F1,0,0,jocú\n");
  read();
  ASSERT_NE(nullptr, fish.find_species(1));
  EXPECT_EQ("", fish.species[1].spanishname.raw());
}

TEST_F(RegionFishInfoTest, AcceptsAnEmptySpeciesFile)
{
  EXPECT_EQ("", read());
  EXPECT_EQ(0, fish.max_rarefishind);
  EXPECT_TRUE(fish.species.empty());
}

TEST_F(RegionFishInfoTest, ListsADuplicateZoneTwice)
{
  zones("5,One\n5,Other\n");
  read();
  EXPECT_EQ(std::vector<int>({5, 5}), fish.geog_ids);
  EXPECT_EQ("Other", fish.geog_names[5].raw());
}

TEST_F(RegionFishInfoTest, KeepsZonesOfAnyNumber)
{
  zones("-5,Below\nwest,Nowhere\n99999999999,Beyond\n");
  const TraceLevel silent(-2);
  EXPECT_EQ("", read());
  EXPECT_EQ(std::vector<int>({-5, 0, 2'147'483'647}), fish.geog_ids);
  EXPECT_EQ("Below", fish.geog_names[-5].raw());
}

TEST_F(RegionFishInfoTest, TracesItsProgressAtLevelFour)
{
  zones("3,Washington\n");
  species("2,a,b,F1,0,0\n");
  const TraceLevel level(4);
  EXPECT_EQ("Starting to read family & species info for XYZ\n"
            "Read family (1), species (3), and geog (1) info for XYZ\n",
            read());
}
