// Runs mavo-data diff, pack and verify like a user.

#include "server/tar-archive.h"
#include "support/data-set.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <sstream>

#include "tool-run.h"

namespace fs = std::filesystem;

namespace {

bool has(const std::string& text, const std::string& part)
{
  return text.find(part) != std::string::npos;
}

std::vector<nlohmann::json> json_lines(const std::string& text)
{
  std::vector<nlohmann::json> objects;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);)
    objects.push_back(nlohmann::json::parse(line));
  return objects;
}

// Provides a good set, a newer set, and a separate directory for temporary files.
class Publishing : public testing::Test
{
public:
  Publishing()
  {
    set.minimal();
    newer.minimal();
    newer.file("data-file-info.txt",
               "version=1\ntimestamp=20220202000000\nupdated=February 2, 2022\n");
    fs::create_directories(temporary);
    setenv("TMPDIR", temporary.c_str(), 1);
  }
  ~Publishing() override { unsetenv("TMPDIR"); }

  static ToolRun run(const std::vector<std::string>& arguments)
  {
    return run_program("mavo-data", arguments);
  }

  void change_species() const
  {
    std::string text = read_file(newer.dir + "PAC-species-info.csv");
    const std::string old_name = "Jordania zonope,Longfin Sculpin";
    newer.file("PAC-species-info.csv",
               text.replace(text.find(old_name), old_name.size(), "Sebastes miniatus,Vermilion"));
  }

  void save_survey() const
  {
    write_file(surveys + "/below/a.MAVO-Survey",
               "<MAVO-Survey version='1.0'><survey><subregion>PNW</subregion>"
               "<survey_subtype>1</survey_subtype><ids><species id='10' abun='1'/></ids>"
               "</survey></MAVO-Survey>");
  }

  void expect_no_scratch() const { EXPECT_TRUE(fs::is_empty(temporary)); }

  const DataSet set;
  const DataSet newer;
  const DataSet place;
  const std::string temporary = place.dir + "tmp";
  const std::string surveys = place.dir + "surveys";
  const std::string archive = place.dir + "new data.tar.bz2";
};

} // namespace

// --- diff ---

TEST_F(Publishing, FindsNoFaultInASetThatIsOnlyNewer)
{
  const ToolRun diff = run({"diff", set.dir, newer.dir});
  EXPECT_EQ(0, diff.status);
  EXPECT_EQ("", diff.out + diff.err);
}

TEST_F(Publishing, ShowsIdsThatChangeTheirMeaning)
{
  change_species();
  const std::string dir = newer.dir.substr(0, newer.dir.size() - 1);
  const ToolRun diff = run({"diff", set.dir, dir});
  EXPECT_EQ(1, diff.status);
  EXPECT_EQ(newer.dir + "PAC-species-info.csv:2: error: Species 10 of region PAC was \"Jordania "
                        "zonope (Longfin Sculpin)\", and is now \"Sebastes miniatus "
                        "(Vermilion)\". Saved surveys that contain it mean something else "
                        "[id-changed-meaning]\n",
            diff.out);
}

TEST_F(Publishing, ListsSavedSurveysThatNewDataHarm)
{
  change_species();
  save_survey();
  const ToolRun diff = run({"diff", "--format=json", "--surveys", surveys, set.dir, newer.dir});
  EXPECT_EQ(1, diff.status);
  const auto findings = json_lines(diff.out);
  ASSERT_EQ(2U, findings.size());
  EXPECT_EQ("id-changed-meaning", findings[0]["rule"]);
  EXPECT_EQ("survey-means-another", findings[1]["rule"]);
  EXPECT_EQ(surveys + "/below/a.MAVO-Survey", findings[1]["file"]);
  EXPECT_TRUE(findings[1]["line"].is_null());
}

TEST_F(Publishing, SucceedsForNewNames)
{
  newer.file("PAC-geog.csv", read_file(newer.dir + "PAC-geog.csv") + "40100020,Scripps Canyon\n");
  const ToolRun diff = run({"diff", set.dir, newer.dir});
  EXPECT_EQ(0, diff.status);
  EXPECT_TRUE(has(diff.out, "[zone-added]")) << diff.out;
}

TEST_F(Publishing, ComparesOnlySetsThatTheProgramCanRead)
{
  newer.file("data-file-info.txt", "corrupted");
  EXPECT_EQ(2, run({"diff", set.dir, newer.dir}).status);
  EXPECT_EQ(2, run({"diff", place.dir, set.dir}).status);
  EXPECT_EQ(2, run({"diff", set.dir}).status);
  EXPECT_EQ(2, run({"diff", set.dir, set.dir, "--surveys", place.dir + "none"}).status);
}

// --- pack ---

TEST_F(Publishing, PacksASetAndPrintsTheHeadersOfTheServer)
{
  const ToolRun pack = run({"pack", newer.dir, "-o", archive});
  EXPECT_EQ(0, pack.status) << pack.err;
  EXPECT_EQ("The server must answer GET /offline-data-entry/?get-version=data-files "
            "with status 200 and these headers:\n"
            "  X-Current-Data-Version-Is: 20220202000000\n"
            "  X-Data-Last-Updated-Is: February 2, 2022\n"
            "  X-Download-Data-Files-From: http://" MAVO_WEB_HOST
            "/offline-data-entry/new%20data.tar.bz2\n"
            "It must answer GET http://" MAVO_WEB_HOST
            "/offline-data-entry/new%20data.tar.bz2 with the "
            "archive and these headers:\n"
            "  Content-Type: application/x-bzip2\n"
            "  Content-Length: " +
                std::to_string(fs::file_size(archive)) + "\n",
            pack.out);
  EXPECT_EQ(0, run({"verify", archive}).status);
  expect_no_scratch();
}

TEST_F(Publishing, PacksTheSameBytesAgain)
{
  EXPECT_EQ(0, run({"pack", set.dir, "-o", archive}).status);
  const std::string bytes = read_file(archive);
  fs::last_write_time(set.dir + "habitat.csv", fs::file_time_type::clock::now());
  EXPECT_EQ(0, run({"pack", set.dir, "--output=" + archive}).status);
  EXPECT_EQ(bytes, read_file(archive));
}

TEST_F(Publishing, PrintsHeadersAsJsonWithTheGivenAddress)
{
  const ToolRun pack =
      run({"pack", newer.dir, "-o", archive, "--format=json", "--url=http://data.example/d?a=1"});
  const auto objects = json_lines(pack.out);
  ASSERT_EQ(1U, objects.size());
  EXPECT_EQ("http://data.example/d?a=1", objects[0]["X-Download-Data-Files-From"]);
  EXPECT_EQ("20220202000000", objects[0]["X-Current-Data-Version-Is"]);
}

TEST_F(Publishing, DoesNotPackASetWithErrors)
{
  newer.remove("habitat.csv");
  const ToolRun pack = run({"pack", newer.dir, "-o", archive});
  EXPECT_EQ(1, pack.status);
  EXPECT_TRUE(has(pack.out, ": error: ")) << pack.out;
  EXPECT_FALSE(has(pack.out, "X-Current")) << pack.out;
  EXPECT_FALSE(file_exists(archive));
}

TEST_F(Publishing, KeepsTheOldArchiveIfTheNewOneCannotBeWritten)
{
  EXPECT_EQ(2, run({"pack", set.dir}).status);
  EXPECT_EQ(2, run({"pack", set.dir, "-o", place.dir + "none/a.tar.bz2"}).status);
  EXPECT_EQ(2, run({"pack", place.dir + "none", "-o", archive}).status);
  write_file(archive, "old");
  const ToolRun pack = run_shell("mavo-data", "ulimit -f 1; trap '' XFSZ; \"$TOOL\" pack " +
                                                  set.dir + " -o '" + archive + "'");
  EXPECT_EQ(2, pack.status) << pack.out << pack.err;
  EXPECT_EQ("old", read_file(archive));
  for (const auto& entry : fs::directory_iterator(place.dir))
    EXPECT_TRUE(entry.path() == archive || entry.path() == temporary) << entry.path();
}

// --- verify ---

TEST_F(Publishing, ChecksTheSetInAnArchive)
{
  write_archive(archive, {{"data-files/data-file-info.txt", TarEntry::FILE,
                           read_file(set.dir + "data-file-info.txt")}});
  const ToolRun verify = run({"verify", "--format=json", archive});
  EXPECT_EQ(1, verify.status);
  for (const auto& finding : json_lines(verify.out))
    EXPECT_EQ(0U, finding["file"].get<std::string>().rfind(archive + "/data-files/", 0)) << finding;
  expect_no_scratch();
}

TEST_F(Publishing, RefusesAnArchiveWithoutASet)
{
  write_archive(archive, {{"data-files", TarEntry::DIRECTORY, ""}});
  const ToolRun verify = run({"verify", archive});
  EXPECT_EQ(1, verify.status);
  EXPECT_TRUE(has(verify.out, "[archive-empty]")) << verify.out;
}

TEST_F(Publishing, RefusesAnArchiveThatIsTooLargeToDownload)
{
  write_file(archive, "BZh9");
  fs::resize_file(archive, (32 << 20) + 1);
  const ToolRun verify = run({"verify", archive});
  EXPECT_EQ(1, verify.status);
  EXPECT_TRUE(has(verify.out, "[archive-too-large]")) << verify.out;
}

TEST_F(Publishing, VerifiesOnlyFiles)
{
  EXPECT_EQ(2, run({"verify", place.dir + "none"}).status);
  EXPECT_EQ(2, run({"verify", place.dir}).status);
  EXPECT_EQ(2, run({"verify"}).status);
}

TEST_F(Publishing, LeavesNoScratchDirectoryIfMetadataEndTheProcess)
{
  write_archive(archive, {{"data-files/data-file-info.txt", TarEntry::FILE, "corrupted"}});
  EXPECT_EQ(1, run({"verify", archive}).status);
  expect_no_scratch();
}
