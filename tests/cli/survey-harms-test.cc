#include "data/reference-data.h"
#include "support/data-set.h"
#include "support/output.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "cli/survey-harms.h"

namespace fs = std::filesystem;

namespace {

class SurveyHarmsTest : public testing::Test
{
public:
  SurveyHarmsTest()
  {
    before.minimal();
    after.minimal();
    fs::create_directories(surveys);
  }

  void change(const std::string& file, const std::string& from, const std::string& to) const
  {
    std::string text = read_file(after.dir + file);
    const std::size_t start = text.find(from);
    ASSERT_NE(std::string::npos, start) << from;
    after.file(file, text.replace(start, from.size(), to));
  }

  void save(const std::string& name, const std::string& elements) const
  {
    write_file(surveys + name,
               "<MAVO-Survey version='1.0'><survey>" + elements + "</survey></MAVO-Survey>");
  }

  std::vector<Finding> harms(const std::string& path) const
  {
    ReferenceData old_data;
    ReferenceData new_data;
    output_of([&] {
      EXPECT_EQ(RET_SUCCESS, read_data_set(before.dir, old_data));
      EXPECT_EQ(RET_SUCCESS, read_data_set(after.dir, new_data));
    });
    return find_harmed_surveys(path, old_data, new_data,
                               compare_data_sets(old_data, before.dir, new_data, after.dir));
  }

  const DataSet before;
  const DataSet after;
  const std::string surveys = before.dir + "surveys/";
};

const char* const complete_survey =
    "<member_id>1</member_id><subregion>PNW</subregion><survey_subtype>1</survey_subtype>"
    "<dive_start>9</dive_start><zonecode>31020003</zonecode><visibility>2</visibility>"
    "<avg_depth>2</avg_depth><max_depth>3</max_depth><current>1</current><habitat>3</habitat>"
    "<species_view>2</species_view>"
    "<ids><species id='10' abun='2'/><species id='21' abun='1'/></ids>";

} // namespace

TEST_F(SurveyHarmsTest, AreNoneIfEverythingKeepsItsMeaning)
{
  save("a.MAVO-Survey", complete_survey);
  change("PAC-geog.csv", "Deception Pass", "Cape Flattery"); // no survey has it
  EXPECT_TRUE(harms(surveys).empty());
}

TEST_F(SurveyHarmsTest, AreFoundForEachEntryOfASurvey)
{
  const struct {
    const char* file;
    const char* from;
    const char* to;
  } cases[] = {
      {"region-info.csv", "Northwest: abundance,1", "Northwest: abundance,0"},
      {"data-definitions.csv", "divestart,9,9 AM", "divestart,9,8 AM"},
      {"data-definitions.csv", "visibility,2,Good", "visibility,2,Bad"},
      {"data-definitions.csv", "depth,2,Shallow", "depth,2,Low"},
      {"data-definitions.csv", "depth,3,Deep", "depth,3,Low"},
      {"data-definitions.csv", "current,1,None", "current,1,Little"},
      {"PAC-geog.csv", "31020003,Rosario Wall", "31020003,Cape Flattery"},
      {"habitatregion.csv", "PAC,3,2", "PAC,3,3"},
      {"species-view-definitions.csv", "2,PNW,With invertebrates", "2,CAL,With invertebrates"},
      {"PAC-species-info.csv", "10,Jordania zonope,Longfin Sculpin", "10,Other,Other"},
      {"PAC-species-info.csv", "10,Jordania zonope", "13,Jordania zonope"},
      {"abundance-choices.csv", "Few (2-10),2", "Some,2"},
      {"abundance-choices.csv", "990,99,There,1", "992,99,There,1"},
  };
  save("a.MAVO-Survey", complete_survey);
  for (const auto& c : cases) {
    SCOPED_TRACE(c.to);
    after.minimal();
    change(c.file, c.from, c.to);
    const std::vector<Finding> found = harms(surveys);
    ASSERT_EQ(1U, found.size());
    EXPECT_EQ("survey-means-another", found.front().rule);
    EXPECT_EQ(Severity::error, found.front().severity);
    EXPECT_EQ(surveys + "a.MAVO-Survey", found.front().file);
  }
}

TEST_F(SurveyHarmsTest, NameWhatChanges)
{
  save("a.MAVO-Survey", complete_survey);
  change("PAC-species-info.csv", "10,Jordania zonope,Longfin Sculpin", "10,Aus bus,Other");
  change("data-definitions.csv", "depth,3,Deep", "depth,4,Deep");
  EXPECT_EQ("This survey opens, but its meaning changes: Choice 3 of depth, \"Deep\", is gone; "
            "Species 10 of "
            "region PAC was \"Jordania zonope (Longfin Sculpin)\", and is now \"Aus bus (Other)\"",
            harms(surveys).front().consequence);
}

TEST_F(SurveyHarmsTest, IncludeSurveysThatNoLongerOpen)
{
  save("deep/below/a.MAVO-Survey", complete_survey);
  save("b.MAVO-Survey", "<subregion>CAL</subregion>");
  change("region-info.csv", "PAC,CAL,Pacific,California,5", "PAC,ORE,Pacific,Oregon,5");
  const std::vector<Finding> found = harms(surveys);
  ASSERT_EQ(1U, found.size());
  EXPECT_EQ("survey-does-not-open", found.front().rule);
  EXPECT_EQ(surveys + "b.MAVO-Survey", found.front().file);
  EXPECT_EQ("This survey no longer opens: Location CAL, \"California\", is gone",
            found.front().consequence);
}

TEST_F(SurveyHarmsTest, AreFoundInAllSubdirectories)
{
  save("deep/below/a.MAVO-Survey", complete_survey);
  save("older.MAVO_survey", complete_survey);
  save("other.xml", complete_survey);
  save(".hidden.MAVO-Survey", complete_survey);
  change("habitatregion.csv", "PAC,3,2", "PAC,3,3");
  EXPECT_EQ(3U, harms(surveys).size());
  save("a.txt", complete_survey);
  EXPECT_EQ(1U, harms(surveys + "older.MAVO_survey").size()) << "a file";
  EXPECT_EQ(1U, harms(surveys + "a.txt").size()) << "a file that the caller names";
}

TEST_F(SurveyHarmsTest, IncludeAHintAboutASkippedFile)
{
  save("a.txt", complete_survey);
  const std::vector<Finding> found = harms(surveys);
  ASSERT_EQ(1U, found.size());
  EXPECT_EQ("other-file", found.front().rule);
  EXPECT_EQ(Severity::hint, found.front().severity);
}

TEST_F(SurveyHarmsTest, IncludeAWarningAboutAFileThatIsNotASurvey)
{
  write_file(surveys + "a.MAVO-Survey", "<html/>");
  const std::vector<Finding> found = harms(surveys);
  ASSERT_EQ(1U, found.size());
  EXPECT_EQ("survey-not-readable", found.front().rule);
  EXPECT_EQ(Severity::warning, found.front().severity);
}
