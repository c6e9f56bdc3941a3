// Runs mavo-data check like a user.

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <string>

#include "good-set.h"
#include "tool-run.h"

namespace {

// Provides a good set with one warning: the zone in line 9 has no parent.
class DataCheckTest : public testing::Test
{
protected:
  DataCheckTest()
  {
    write_good_set(set);
    set.file("PAC-geog.csv", read_file(set.dir + "PAC-geog.csv") + "5001,Nowhere\n");
  }

  const DataSet set;
};

} // namespace

TEST_F(DataCheckTest, PrintsAFindingWithItsFileAndLine)
{
  const ToolRun run = run_program("mavo-data", {"check", set.dir});
  EXPECT_EQ(0, run.status);
  EXPECT_EQ(set.dir +
                "PAC-geog.csv:9: warning: The parent 5 of the zone 5001 is missing: users find "
                "the zone at the level above [zone-no-parent]\n",
            run.out);
  EXPECT_EQ("", run.err);
}

TEST_F(DataCheckTest, FailsForAWarningIfItIsStrict)
{
  EXPECT_EQ(1, run_program("mavo-data", {"check", "--strict", set.dir}).status);
}

TEST_F(DataCheckTest, FailsForAnError)
{
  set.remove("habitat.csv");
  EXPECT_EQ(1, run_program("mavo-data", {"check", set.dir}).status);
}

TEST_F(DataCheckTest, PrintsOneJsonObjectForEachFinding)
{
  set.remove("habitat.csv");
  const ToolRun run = run_program("mavo-data", {"check", "--format=json", set.dir});
  EXPECT_EQ(1, run.status);
  std::istringstream lines(run.out);
  std::vector<nlohmann::json> findings;
  for (std::string line; std::getline(lines, line);)
    findings.push_back(nlohmann::json::parse(line));
  ASSERT_EQ(2U, findings.size());
  for (const auto& finding : findings) {
    std::set<std::string> keys;
    for (const auto& [key, value] : finding.items())
      keys.insert(key);
    EXPECT_EQ((std::set<std::string>{"file", "line", "rule", "severity", "consequence"}), keys);
  }
  EXPECT_EQ(9, findings[0]["line"]);
  EXPECT_EQ("warning", findings[0]["severity"]);
  EXPECT_EQ(set.dir + "habitat.csv", findings[1]["file"]);
  EXPECT_TRUE(findings[1]["line"].is_null());
}

TEST_F(DataCheckTest, ChecksSeveralSets)
{
  const DataSet other;
  write_good_set(other);
  other.remove("habitat.csv");
  const ToolRun run = run_program("mavo-data", {"check", set.dir, other.dir});
  EXPECT_EQ(1, run.status);
  EXPECT_NE(std::string::npos, run.out.find(set.dir + "PAC-geog.csv:9:"));
  EXPECT_NE(std::string::npos, run.out.find(other.dir + "habitat.csv: error:"));
}

TEST_F(DataCheckTest, CannotRunWithoutADirectory)
{
  const ToolRun run = run_program("mavo-data", {"check", set.dir + "none"});
  EXPECT_EQ(2, run.status);
  EXPECT_EQ("", run.out);
  EXPECT_NE(std::string::npos, run.err.find("none: No such file or directory"));
}

TEST_F(DataCheckTest, FailsIfTheReportCannotBeWritten)
{
  const ToolRun run = run_shell("mavo-data", "\"$TOOL\" check '" + set.dir + "' > /dev/full");
  EXPECT_EQ(2, run.status);
}
