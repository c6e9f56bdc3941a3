#include "data/data-file-info.h"
#include "support/data-set.h"
#include "support/output.h"

#include <sys/stat.h>

#include "data-checks.h"

namespace {

DataFileInfo info_of(const std::string& text)
{
  const DataSet data;
  data.file("data-file-info.txt", text);
  return DataFileInfo(data.dir);
}

} // namespace

TEST(DataFileInfo, HasTimestampAndDate)
{
  const DataFileInfo info = info_of("version=1\ntimestamp=20210101\nupdated=January 1, 2021\n");
  EXPECT_TRUE(info.valid);
  EXPECT_EQ("20210101", info.timestamp);
  EXPECT_EQ("January 1, 2021", info.updated);
  EXPECT_EQ("data-file-info.txt", DataFileInfo::get_filename());
}

TEST(DataFileInfo, IsValidIfItHasBoth)
{
  const struct {
    const char* why;
    const char* text;
    bool valid;
  } cases[] = {
      {"no version", "timestamp=1\nupdated=x\n", true},
      {"no last line feed", "timestamp=1\nupdated=x", true},
      {"blank lines", "\n\ntimestamp=1\n\nupdated=x\n", true},
      {"only the version", "version=1\n", false},
      {"no date", "version=1\ntimestamp=1\n", false},
      {"no timestamp", "version=1\nupdated=x\n", false},
      {"empty date", "timestamp=1\nupdated=\n", false},
      {"emptied by a later line", "timestamp=1\nupdated=x\ntimestamp=\n", false},
      {"empty file", "", false},
  };
  for (const auto& c : cases) {
    bool valid = !c.valid;
    EXPECT_EQ("", output_of([&] { valid = info_of(c.text).valid; })) << c.why;
    EXPECT_EQ(c.valid, valid) << c.why;
  }
}

TEST(DataFileInfo, KeepsValuesUnchanged)
{
  const DataFileInfo info = info_of("timestamp=1=2==\nupdated= x \r\nupdated= y \r\n");
  EXPECT_EQ("1=2==", info.timestamp);
  EXPECT_EQ(" y \r", info.updated) << "the last one counts";
}

TEST(DataFileInfo, IsInvalidWithoutAMessageIfTheFileIsUnreadable)
{
  const DataSet missing;
  const DataSet directory;
  ASSERT_EQ(0, mkdir((directory.dir + "data-file-info.txt").c_str(), 0700));
  const DataSet pipe;
  ASSERT_EQ(0, mkfifo((pipe.dir + "data-file-info.txt").c_str(), 0600));
  for (const auto* data : {&missing, &directory, &pipe})
    EXPECT_EQ("", output_of([data] { EXPECT_FALSE(DataFileInfo(data->dir).valid); }));
}

TEST(DataFileInfo, ReportsAKeyThatItIgnores)
{
  bool valid = false;
  EXPECT_EQ("Ignoring unknown data-file-info key \"colour\" (= \"blue=green\")\n"
            "Ignoring unknown data-file-info key \"\" (= \"\")\n"
            "Ignoring unknown data-file-info key \" updated\" (= \"y\")\n",
            output_of([&] {
              valid = info_of("timestamp=1\ncolour=blue=green\n=\n updated=y\nupdated=x\n").valid;
            }));
  EXPECT_TRUE(valid);
}

TEST(DataFileInfo, ReportsAnotherVersionAndContinues)
{
  bool valid = false;
  EXPECT_EQ(
      "*** ERROR: Can't handle data file metadata version 2 & a half - please download "
      "a newer version of this program!\n",
      reported_by([&] { valid = info_of("version=2 & a half\ntimestamp=1\nupdated=x\n").valid; }));
  EXPECT_TRUE(valid);
  EXPECT_NE("", reported_by([] { info_of("version=1\r\n"); })) << "a carriage return counts";
  EXPECT_NE("", reported_by([] { info_of("version=\n"); }));
  EXPECT_NE("", reported_by([] { info_of("version=\xFF\n"); }));
}

TEST(DataFileInfoDeathTest, EndsTheProgramAtALineWithoutAnEqualsSign)
{
  EXPECT_EXIT(info_of("timestamp=1\nupdated\n"), testing::ExitedWithCode(1),
              "\\*\\*\\* FATAL ERROR: Data file metadata is corrupted!");
  EXPECT_EXIT(info_of("\r\n"), testing::ExitedWithCode(1), "corrupted");
}
