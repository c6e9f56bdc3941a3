// Tests whether each rule of mavo-data check finds its fault and nothing else.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "cli/could-not-run.h"
#include "cli/data-rules.h"
#include "cli/data-set-check.h"
#include "good-set.h"
#include "single-faults.h"

namespace {

std::string name_of(Severity severity)
{
  return severity == Severity::error ? "error" : severity == Severity::warning ? "warning" : "hint";
}

// Returns a line for each finding: file, line, rule and severity.
std::string summary(const std::vector<Finding>& findings)
{
  std::string text;
  for (const Finding& finding : findings) {
    text += std::filesystem::path(finding.file).filename().string() + " " +
            std::to_string(finding.line.value_or(0)) + " " + finding.rule + " " +
            name_of(finding.severity) + "\n";
  }
  return text;
}

class SingleFaults : public testing::TestWithParam<SingleFault>
{
};

std::size_t count_of(const std::string& rule, const std::vector<Finding>& findings)
{
  return static_cast<std::size_t>(std::count_if(findings.begin(), findings.end(),
                                                [&](const Finding& f) { return f.rule == rule; }));
}

} // namespace

TEST_P(SingleFaults, AreFoundAtTheirPlaceWithoutOtherFindings)
{
  const SingleFault& fault = GetParam();
  const DataSet set;
  write_good_set(set);
  for (const Edit& edit : fault.edits)
    edit.apply_to(set);
  EXPECT_EQ(std::string(fault.file) + " " + std::to_string(fault.line) + " " + fault.rule + " " +
                name_of(fault.severity) + "\n",
            summary(check_data_set(set.dir)));
}

INSTANTIATE_TEST_SUITE_P(DataSetCheck, SingleFaults, testing::ValuesIn(single_faults()),
                         [](const auto& fault) {
                           std::string name =
                               fault.param.rule + ("_" + std::to_string(fault.index));
                           std::replace(name.begin(), name.end(), '-', '_');
                           return name;
                         });

TEST(DataSetCheck, FindsNothingInAGoodSet)
{
  const DataSet set;
  write_good_set(set);
  EXPECT_EQ("", summary(check_data_set(set.dir)));
}

TEST(DataSetCheck, TestsEachRuleWithASingleFault)
{
  std::set<std::string> tried{"file-too-large", "line-too-long", "numbering-gap"}; // see below
  for (const SingleFault& fault : single_faults())
    tried.insert(fault.rule);
  for (const Rule& rule : data_rules())
    EXPECT_EQ(1U, tried.count(rule.id)) << rule.id;
  EXPECT_EQ(tried.size(), data_rules().size());
}

TEST(DataSetCheck, ReportsAFileThatIsTooLarge)
{
  const DataSet set;
  write_good_set(set);
  set.file("habitat.csv", "habitatid,habitatname,habitatdescr\n" + std::string(33'554'432, '\n'));
  EXPECT_EQ("habitat.csv 0 file-too-large error\n", summary(check_data_set(set.dir)));
}

TEST(DataSetCheck, ReportsALineThatIsTooLong)
{
  const DataSet set;
  write_good_set(set);
  for (const char* const file : {"habitat.csv", "data-file-info.txt"}) {
    const std::string content = read_file(set.dir + file);
    set.file(file, content + "\n" + std::string(1'048'577, '='));
    EXPECT_EQ(file + std::string(file == std::string("habitat.csv") ? " 6" : " 5") +
                  " line-too-long error\n",
              summary(check_data_set(set.dir)));
    set.file(file, content);
  }
}

TEST(DataSetCheck, ReportsTheFirstNumberBeyondTheLimitOfGaps)
{
  const DataSet set;
  write_good_set(set);
  std::string rows = read_file(set.dir + "habitatregion.csv");
  for (char region = 'A'; region <= 'K'; ++region)
    rows += std::string(1, region) + ",99999,1\n";
  set.file("habitatregion.csv", rows);
  std::vector<Finding> findings = check_data_set(set.dir);
  EXPECT_EQ(1U, count_of("numbering-gap", findings));
  EXPECT_EQ(15, findings.back().line);
  EXPECT_EQ("numbering-gap", findings.back().rule);
}

TEST(DataSetCheck, ReportsAllFaultsInOneRun)
{
  const DataSet set;
  write_good_set(set);
  set.file("PAC-geog.csv", "geogid,name\n3\n50,Nowhere\n31,Nowhere,else\n3,\n");
  set.file("habitat.csv", "habitatid,name\n1,Kelp\n2\n");
  set.file("data-file-info.txt", "version=3\nnothing\n");
  set.remove("CAR-geog.csv");
  EXPECT_EQ("CAR-geog.csv 0 file-missing error\n"
            "PAC-geog.csv 2 row-width error\n"
            "PAC-geog.csv 3 zone-level warning\n"
            "PAC-geog.csv 4 row-width error\n"
            "PAC-geog.csv 5 name-missing warning\n"
            "data-file-info.txt 0 metadata-incomplete error\n"
            "data-file-info.txt 0 metadata-incomplete error\n"
            "data-file-info.txt 1 metadata-version error\n"
            "data-file-info.txt 2 metadata-line error\n"
            "habitat.csv 1 heading-missing error\n"
            "habitat.csv 1 heading-missing error\n"
            "habitat.csv 3 row-width error\n",
            summary(check_data_set(set.dir)));
}

TEST(DataSetCheck, ChecksTheFilesOfRegionsEvenIfTheListOfRegionsIsBroken)
{
  const DataSet set;
  write_good_set(set);
  set.file("region-info.csv", "regioncode\nPAC\n");
  set.file("PAC-geog.csv", "geogid,name\n50,Nowhere\n");
  const std::vector<Finding> findings = check_data_set(set.dir);
  EXPECT_EQ("PAC-geog.csv 2 zone-level warning\n", summary({findings.front()}));
  EXPECT_EQ(1 + 10U, findings.size());
}

TEST(DataSetCheck, ReadsNoFileOutsideTheDirectory)
{
  const DataSet set;
  write_good_set(set);
  set.file("inner/PAC-geog.csv", "geogid,name\n50,Nowhere\n");
  set.file("region-info.csv",
           read_file(set.dir + "region-info.csv") + "inner/PAC,IN,In,In,7,In,0,1,0,0,0\n");
  const std::string found = summary(check_data_set(set.dir));
  EXPECT_NE(std::string::npos, found.find("code-unusable"));
  EXPECT_NE(std::string::npos, found.find("PAC-geog.csv 0 file-missing error\n"));
  EXPECT_EQ(std::string::npos, found.find("zone-level"));
}

TEST(DataSetCheck, ReportsARowThatLosesItsLastFieldToACarriageReturn)
{
  const DataSet set;
  write_good_set(set);
  set.file("habitat.csv",
           "habitatid,habitatname,habitatdescr\r\n1,Kelp,\r\n2,Wall,\"\"\r\n3,Reef,Coral\r\n");
  EXPECT_EQ("habitat.csv 1 line-ends warning\nhabitat.csv 2 row-width error\n",
            summary(check_data_set(set.dir)));
}

TEST(DataSetCheck, AcceptsValidMarkupAmpersandsAndQuotes)
{
  const DataSet set;
  write_good_set(set);
  set.file("CAR-family-info.csv",
           "familyid,scientificname,commonname\nF1,Pomacanthidae,<i>Angel</i> & others\n"
           "F2,Lutjanidae,\"Snappers, \"\"true\"\" \\\\\"\n");
  EXPECT_EQ("", summary(check_data_set(set.dir)));
}

TEST(DataSetCheck, CannotRunWithoutADirectory)
{
  EXPECT_THROW(check_data_set("/no/such/directory"), CouldNotRun);
}
