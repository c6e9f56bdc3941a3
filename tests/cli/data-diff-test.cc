#include "data/reference-data.h"
#include "support/data-set.h"
#include "support/output.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "cli/data-diff.h"

namespace {

std::string replaced(std::string text, const std::string& from, const std::string& to)
{
  const std::size_t start = text.find(from);
  EXPECT_NE(std::string::npos, start) << from;
  return start == std::string::npos ? text : text.replace(start, from.size(), to);
}

class DataDiffTest : public testing::Test
{
public:
  DataDiffTest()
  {
    before.minimal();
    after.minimal();
    after.file("data-file-info.txt", "version=1\ntimestamp=20220202000000\nupdated=x\n");
  }

  void change(const std::string& file, const std::string& from, const std::string& to) const
  {
    after.file(file, replaced(read_file(after.dir + file), from, to));
  }

  // Returns "severity rule: consequence" for each finding.
  std::vector<std::string> differences()
  {
    ReferenceData old_data;
    ReferenceData new_data;
    output_of([&] {
      if (read_data_set(before.dir, old_data) != RET_SUCCESS ||
          read_data_set(after.dir, new_data) != RET_SUCCESS)
        throw std::runtime_error("a data set of the test cannot be read");
    });
    diff = compare_data_sets(old_data, before.dir, new_data, after.dir);
    std::vector<std::string> lines;
    for (const Finding& finding : diff.findings) {
      const char* const names[] = {"error ", "warning ", "hint "};
      lines.push_back(names[static_cast<int>(finding.severity)] + finding.rule + ": " +
                      finding.consequence);
    }
    return lines;
  }

  const DataSet before;
  const DataSet after;
  DataDiff diff; // the result of differences()
};

using Lines = std::vector<std::string>;

const char* const species_file = "PAC-species-info.csv";
const char* const places_file = "region-info.csv";
const char* const classes_file = "abundance-choices.csv";

} // namespace

TEST_F(DataDiffTest, FindsNothingInASetThatIsOnlyNewer)
{
  EXPECT_EQ(Lines{}, differences());
  EXPECT_TRUE(diff.harms.empty());
}

TEST_F(DataDiffTest, WarnsAboutASetThatIsNotNewer)
{
  after.file("data-file-info.txt", "version=1\ntimestamp=20210101000000\nupdated=x\n");
  EXPECT_EQ(Lines{"warning timestamp-not-newer: The timestamp 20210101000000 is not above "
                  "20210101000000. Members who have the old set do not get the new one"},
            differences());
}

// --- species ---

TEST_F(DataDiffTest, ShowsAddedAndRemovedSpecies)
{
  change(species_file, "12,Hexagrammos decagrammus,Kelp Greenling,F2,0,0\n",
         "13,Hexagrammos stelleri,Whitespotted Greenling,F2,0,0\n");
  const Lines expected{
      "warning species-removed: Species 12 of region PAC, \"Hexagrammos decagrammus (Kelp "
      "Greenling)\", is gone. Saved surveys that contain it no longer show it",
      "hint species-added: Species 13 of region PAC, \"Hexagrammos stelleri (Whitespotted "
      "Greenling)\", is new"};
  EXPECT_EQ(expected, differences());
  EXPECT_EQ(1U, diff.harms.count("species PAC 12"));
  EXPECT_EQ(before.dir + species_file, diff.findings[0].file);
  EXPECT_EQ(4, diff.findings[0].line);
  EXPECT_EQ(after.dir + species_file, diff.findings[1].file);
  EXPECT_EQ(4, diff.findings[1].line);
}

TEST_F(DataDiffTest, RecognisesASpeciesByItsScientificName)
{
  change(species_file, "Longfin Sculpin", "Long Fin");
  EXPECT_EQ(Lines{"hint species-renamed: Species 10 of region PAC was called \"Jordania zonope "
                  "(Longfin Sculpin)\" and is now called \"Jordania zonope (Long Fin)\""},
            differences());
  EXPECT_TRUE(diff.harms.empty());
}

TEST_F(DataDiffTest, AsksForAReviewIfOnlyTheScientificNameChanges)
{
  change(species_file, "Jordania zonope", "Zonope jordani");
  EXPECT_EQ(
      Lines{"warning species-renamed: Species 10 of region PAC was called \"Jordania zonope "
            "(Longfin Sculpin)\" and is now called \"Zonope jordani (Longfin Sculpin)\". Make "
            "sure that this is the same species"},
      differences());
}

TEST_F(DataDiffTest, ReportsASpeciesIdWithAnotherMeaning)
{
  change(species_file, "10,Jordania zonope,Longfin Sculpin", "10,Sebastes miniatus,Vermilion");
  EXPECT_EQ(
      Lines{"error id-changed-meaning: Species 10 of region PAC was \"Jordania zonope "
            "(Longfin Sculpin)\", and is now \"Sebastes miniatus (Vermilion)\". Saved surveys "
            "that contain it mean something else"},
      differences());
  EXPECT_EQ(1U, diff.harms.count("species PAC 10"));
}

TEST_F(DataDiffTest, DistinguishesSpeciesWithSimilarNames)
{
  before.file(species_file,
              replaced(read_file(before.dir + species_file), "10,Jordania zonope,Longfin Sculpin",
                       "10,Sebastes ciliatus,Dusky"));
  change(species_file, "10,Jordania zonope,Longfin Sculpin", "10,Sebastes miniatus,Vermilion");
  differences();
  ASSERT_EQ(1U, diff.findings.size());
  EXPECT_EQ("id-changed-meaning", diff.findings.front().rule);
}

TEST_F(DataDiffTest, FindsIdsThatAreShiftedByOne)
{
  change(species_file, "11,Ophiodon elongatus,Lingcod,F2,0,1\n12,Hexagrammos",
         "12,Ophiodon elongatus,Lingcod,F2,0,1\n13,Hexagrammos");
  differences();
  ASSERT_EQ(3U, diff.findings.size());
  EXPECT_EQ("id-changed-meaning", diff.findings[0].rule); // 12
  EXPECT_EQ("species-removed", diff.findings[1].rule);    // 11
  EXPECT_EQ("species-added", diff.findings[2].rule);      // 13
}

TEST_F(DataDiffTest, RecognisesASpeciesWithoutAScientificNameByItsCommonName)
{
  const std::string from = "10,Jordania zonope,Longfin Sculpin";
  before.file(species_file,
              replaced(read_file(before.dir + species_file), from, "10,,Longfin Sculpin"));
  change(species_file, from, "10,,longfin  sculpins");
  EXPECT_EQ(Lines{"hint species-renamed: Species 10 of region PAC was called \"Longfin Sculpin\" "
                  "and is now called \"longfin  sculpins\""},
            differences());
}

TEST_F(DataDiffTest, FindsASpeciesWhoseNumbersAreNoLongerRecorded)
{
  change(species_file, "Ochre Star,F3,1,0", "Ochre Star,F3,2,0");
  EXPECT_EQ(
      Lines{"error id-changed-meaning: Species 20 of region PAC was \"Pisaster ochraceus "
            "(Ochre Star)\", recorded as the survey type requires, and is now \"Pisaster ochraceus "
            "(Ochre Star)\", recorded only as present. Saved surveys that contain it mean "
            "something else"},
      differences());
}

TEST_F(DataDiffTest, ShowsASpeciesOfAnotherFamilyOrRarity)
{
  change(species_file, "Lingcod,F2,0,1", "Lingcod,F1,0,0");
  EXPECT_EQ(Lines{"hint species-changed: Species 11 of region PAC, \"Ophiodon elongatus "
                  "(Lingcod)\", was: fish, family Greenlings, rarity 1; is now: fish, family "
                  "Sculpins, rarity 0"},
            differences());
}

// --- places and survey types ---

TEST_F(DataDiffTest, ShowsAddedRemovedAndRenamedLocations)
{
  change(places_file, "PAC,CAL,Pacific,California,5", "PAC,ORE,Pacific,Oregon,5");
  change(places_file, "Florida & Gulf", "Florida & the Gulf");
  change("species-view-definitions.csv", "3,CAL", "3,ORE");
  differences();
  std::vector<std::string> rules;
  for (const Finding& finding : diff.findings)
    rules.push_back(finding.rule);
  const Lines expected{"id-changed-meaning", "id-changed-meaning", "place-removed", "place-renamed",
                       "place-added"};
  EXPECT_EQ(expected, rules) << "type 5 and view 3 are now those of another location";
  EXPECT_EQ(1U, diff.harms.count("place CAL"));
  EXPECT_EQ(1U, diff.harms.count("type 5"));
}

TEST_F(DataDiffTest, RecognisesALocationThatGetsTheNameOfAnother)
{
  const std::string rows = read_file(after.dir + places_file);
  after.file(places_file, replaced(replaced(rows, "California,5", "Northwest,5"), "Florida & Gulf",
                                   "California"));
  differences();
  ASSERT_EQ(2U, diff.findings.size());
  EXPECT_EQ("id-changed-meaning", diff.findings[0].rule);
  EXPECT_EQ("id-changed-meaning", diff.findings[1].rule);
}

TEST_F(DataDiffTest, ReportsARemovedRegionOnceAndNotEachOfItsZones)
{
  change(places_file, "CAR,FLA,Caribbean,Florida & Gulf,6,Florida: abundance,1,1,0,1,1\n", "");
  change("species-view-definitions.csv", "4,FLA,Common,1\n", "");
  differences();
  for (const Finding& finding : diff.findings) {
    EXPECT_NE("zone-removed", finding.rule);
    EXPECT_NE("species-removed", finding.rule);
  }
  EXPECT_EQ("region-removed", diff.findings.front().rule);
}

TEST_F(DataDiffTest, FindsASurveyTypeWithOtherRequirements)
{
  change(places_file, "2,Northwest: species only,0", "2,Northwest: species only,1");
  EXPECT_EQ(Lines{"error id-changed-meaning: Survey type 2 was \"Northwest: species only\", of "
                  "location PNW, asks for presence only, and is now \"Northwest: species only\", "
                  "of location PNW, asks for numbers. Saved surveys that contain it mean something "
                  "else"},
            differences());
}

TEST_F(DataDiffTest, ShowsASurveyTypeThatIsNoLongerOffered)
{
  change(places_file, "2,Northwest: species only,0,1,0,0,1", "2,Northwest: species only,0,1,0,0,0");
  EXPECT_EQ(Lines{"hint type-changed: Survey type 2, \"Northwest: species only\", was: offered, "
                  "fish; is now: no longer offered, fish"},
            differences());
}

// --- zones, habitats, views ---

TEST_F(DataDiffTest, DistinguishesACorrectedZoneFromAnother)
{
  change("PAC-geog.csv", "Deception Pass", "\"Deception Pass, North\"");
  change("PAC-geog.csv", "Rosario Wall", "Cape Flattery");
  const Lines expected{"error id-changed-meaning: Zone 31020003 of region PAC was \"Rosario "
                       "Wall\", and is now \"Cape Flattery\". Saved surveys that contain it mean "
                       "something else",
                       "hint zone-renamed: Zone 31020004 of region PAC was called \"Deception "
                       "Pass\" and is now called \"Deception Pass, North\""};
  EXPECT_EQ(expected, differences());
}

TEST_F(DataDiffTest, FindsAHabitatCodeThatMeansAnotherHabitat)
{
  change("habitatregion.csv", "PAC,3,2", "PAC,3,3");
  EXPECT_EQ(Lines{"error id-changed-meaning: Habitat 3 of region PAC was \"Wall\", and is now "
                  "\"Reef\". Saved surveys that contain it mean something else"},
            differences());
}

TEST_F(DataDiffTest, ShowsAViewWithOtherSpeciesOrAnotherDefault)
{
  change("species-views.csv", "1,11,F2\n", "1,12,F2\n1,20,F3\n");
  change("species-view-definitions.csv", "1,PNW,Common,1\n2,PNW,With invertebrates,0",
         "1,PNW,Common,0\n2,PNW,With invertebrates,1");
  const Lines expected{
      "hint view-changed: Species view 1, \"Common\", was: the default view; is now: a further "
      "view",
      "hint view-changed: Species view 2, \"With invertebrates\", was: a further view; is now: "
      "the default view",
      "hint view-species-changed: Species view 1, \"Common\" of location PNW, gains 2 species and "
      "loses 1"};
  EXPECT_EQ(expected, differences());
}

// --- choices, abundance classes, limits ---

TEST_F(DataDiffTest, NamesTheLineOfEachKindOfThing)
{
  change("region-info.csv", "Northwest,2,Northwest: species only", "Northwest,2,Other");
  change("PAC-geog.csv", "Rosario Wall", "Cape Flattery");
  change("species-view-definitions.csv", "2,PNW,With invertebrates", "2,PNW,All");
  change("habitatregion.csv", "PAC,3,2", "PAC,03,3");
  change("data-definitions.csv", "depth,3,Deep", "depth,3,Deeper");
  change(classes_file, "102,1,Few (2-10)", "102,1,Some");
  differences();
  std::vector<long> lines;
  for (const Finding& finding : diff.findings)
    lines.push_back(finding.line.value_or(0));
  const std::vector<long> expected{3, 4, 3, 3, 14, 3};
  EXPECT_EQ(expected, lines);
}

TEST_F(DataDiffTest, TreatsEachChangedLabelOfAChoiceAsAnotherMeaning)
{
  change("data-definitions.csv", "depth,3,Deep", "depth,3,Deeper");
  EXPECT_EQ(Lines{"error id-changed-meaning: Choice 3 of depth was \"Deep\", and is now "
                  "\"Deeper\". Saved surveys that contain it mean something else"},
            differences());
  EXPECT_EQ(1U, diff.harms.count("choice depth 3"));
}

TEST_F(DataDiffTest, FindsAnAbundanceClassWithAnotherLabel)
{
  change(classes_file, "102,1,Few (2-10),2", "102,1,Few (2-20),2");
  EXPECT_EQ(Lines{"error id-changed-meaning: Abundance class 2 of survey type 1 was \"Few "
                  "(2-10)\", and is now \"Few (2-20)\". Saved surveys that contain it mean "
                  "something else"},
            differences());
  EXPECT_EQ(1U, diff.harms.count("abundance 1 2"));
}

TEST_F(DataDiffTest, FindsAResponseIdOfAnotherClass)
{
  change(classes_file, "102,1,Few (2-10),2\n103,1,Many (11-100),3",
         "103,1,Few (2-10),2\n104,1,Many (11-100),3");
  differences();
  ASSERT_EQ(3U, diff.findings.size());
  EXPECT_EQ("Response id 103 was \"class 3 of survey type 1\", and is now \"class 2 of survey type "
            "1\". Saved surveys that contain it mean something else",
            diff.findings.back().consequence);
}

TEST_F(DataDiffTest, ShowsChangedLimits)
{
  change("data-parameters.csv", "temp_min_f,28", "temp_min_f,30");
  EXPECT_EQ(Lines{"hint limit-changed: Limit temp_min_f was: 28; is now: 30"}, differences());
}
