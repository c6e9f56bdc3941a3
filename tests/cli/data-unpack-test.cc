#include "server/hostile-archives.h"
#include "support/data-set.h"
#include "support/output.h"

#include <glibmm/ustring.h>
#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>

#include "cli/data-pack.h"
#include "cli/data-unpack.h"

namespace fs = std::filesystem;

namespace {

using Entries = std::vector<TarEntry>;
using Rules = std::vector<std::string>;

// Creates scratch directories beside a directory that the functions must not touch.
class DataUnpackTest : public testing::Test
{
public:
  DataUnpackTest() : before(fs::temp_directory_path())
  {
    setenv("TMPDIR", (place.dir + "tmp").c_str(), 1);
    fs::create_directories(place.dir + "tmp");
    write_file(outside + "/diary.txt", "mine");
    set.minimal();
  }
  ~DataUnpackTest() override { setenv("TMPDIR", before.c_str(), 1); }

  // Unpacks the archive and returns the rules of the findings.
  Rules unpack()
  {
    const ScratchDirectory scratch;
    const UnpackedSet result = unpack_data_archive(archive, scratch);
    findings = result.findings;
    is_complete = result.is_complete;
    unpacked.clear();
    for (const auto& entry : fs::recursive_directory_iterator(scratch.path)) {
      EXPECT_FALSE(entry.is_symlink());
      EXPECT_EQ(1U, entry.is_directory() ? 1U : entry.hard_link_count());
      if (entry.is_regular_file())
        unpacked[entry.path().lexically_relative(scratch.path).string()] =
            entry.file_size() < 1'000'000 ? read_file(entry.path()) : "large";
    }
    Rules rules;
    for (const Finding& finding : findings)
      rules.push_back(finding.rule);
    return rules;
  }
  Rules unpack(const Entries& entries)
  {
    write_archive(archive, entries);
    return unpack();
  }

  Entries complete_set() const
  {
    Entries entries;
    for (const auto& file : fs::directory_iterator(set.dir))
      entries.push_back({"data-files/" + file.path().filename().string(), TarEntry::FILE,
                         read_file(file.path())});
    return entries;
  }

  // Returns the same entries with additional entries at the end.
  Entries set_with(const Entries& more) const
  {
    Entries entries = complete_set();
    entries.insert(entries.end(), more.begin(), more.end());
    return entries;
  }

  void run(const std::string& command) const { ASSERT_EQ(0, std::system(command.c_str())); }

  void expect_outside_untouched() const
  {
    EXPECT_EQ("mine", read_file(outside + "/diary.txt"));
    const fs::directory_iterator files(outside);
    EXPECT_EQ(1, std::distance(begin(files), end(files)));
    EXPECT_EQ(1U, fs::hard_link_count(outside + "/diary.txt"));
    EXPECT_FALSE(file_exists(place.dir + "new.txt"));
    EXPECT_TRUE(fs::is_empty(place.dir + "tmp")) << "a scratch directory remains";
  }

  const fs::path before;
  const DataSet place;
  const DataSet set;
  const std::string outside = place.dir + "outside";
  const std::string archive = place.dir + "a.tar.bz2";
  std::vector<Finding> findings;
  bool is_complete = false;
  std::map<std::string, std::string> unpacked; // contents by name
};

using DataUnpackDeathTest = DataUnpackTest;

} // namespace

TEST_F(DataUnpackTest, UnpacksThePackedFiles)
{
  output_of([&] { write_file(archive, pack_data_set(set.dir)); });
  EXPECT_EQ(Rules{}, unpack());
  EXPECT_TRUE(is_complete);
  EXPECT_EQ(15U, unpacked.size());
  EXPECT_EQ(read_file(set.dir + "habitat.csv"), unpacked["data-files/habitat.csv"]);
}

TEST_F(DataUnpackTest, AcceptsArchivesOfTar)
{
  fs::create_directories(place.dir + "top");
  fs::copy(set.dir, place.dir + "top/data-files");
  for (const char* const what : {"data-files", "./data-files", "."}) {
    for (const char* const format : {"ustar", "gnu", "pax"}) {
      run("tar -C '" + place.dir + "top' --format=" + format + " -cjf '" + archive + "' " + what);
      EXPECT_EQ(Rules{}, unpack()) << what << ' ' << format;
      EXPECT_EQ(15U, unpacked.size());
    }
  }
}

// --- paths outside of the directory ---

TEST_F(DataUnpackTest, RefusesEveryHostileArchive)
{
  for (const auto& hostile : hostile_archives(outside)) {
    SCOPED_TRACE(hostile.why);
    EXPECT_NE(Rules{}, unpack(set_with(hostile.entries)));
    EXPECT_EQ(Severity::error, findings.front().severity);
    expect_outside_untouched();
  }
  for (const auto& hostile : hostile_pairs(outside)) {
    SCOPED_TRACE(hostile.why);
    EXPECT_NE(Rules{}, unpack(set_with(hostile.first)));
    expect_outside_untouched();
  }
  for (const auto& hostile : forged_backups()) {
    SCOPED_TRACE(hostile.back().name);
    EXPECT_NE(Rules{}, unpack(set_with(hostile)));
    expect_outside_untouched();
  }
}

TEST_F(DataUnpackTest, ReportsTheFaultOfAnEntry)
{
  const struct {
    TarEntry entry;
    const char* rule;
  } cases[] = {
      {{"/etc/mavo", TarEntry::FILE, "x"}, "archive-outside"},
      {{"data-files/../new.txt", TarEntry::FILE, "x"}, "archive-outside"},
      {{"..", TarEntry::DIRECTORY, ""}, "archive-outside"},
      {{"data-files/a.csv", TarEntry::LINK, "habitat.csv"}, "archive-link"},
      {{"data-files/a.csv", TarEntry::HARD_LINK, "data-files/habitat.csv"}, "archive-link"},
      {{"data-files/a.csv", TarEntry::FIFO, ""}, "archive-device"},
      {{"data-files/habitat.csv", static_cast<TarEntry::Type>('3'), ""}, "archive-device"},
      {{"data-files/habitat.csv", static_cast<TarEntry::Type>('4'), ""}, "archive-device"},
      {{"notes.txt", TarEntry::FILE, "x"}, "archive-stray"},
      {{"data-files/more/a.csv", TarEntry::FILE, "x"}, "archive-stray"},
      {{"data-files/more", TarEntry::DIRECTORY, ""}, "archive-stray"},
      {{"data-files", TarEntry::FILE, "x"}, "archive-stray"},
      {{"data-files/habitat.csv", TarEntry::FILE, "x"}, "archive-entry-twice"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Rules{c.rule}, unpack(set_with({c.entry}))) << c.entry.name;
    EXPECT_EQ(archive + "/" + c.entry.name, findings.front().file);
  }
}

TEST_F(DataUnpackTest, NamesAnEntryInOneLineOfValidText)
{
  unpack(set_with({{"bad\nname\x1b[31m\xff", TarEntry::FILE, "x"}}));
  EXPECT_EQ(archive + "/bad?name?[31m\uFFFD", findings.front().file);
}

TEST_F(DataUnpackTest, KeepsTheLastOfTwoFilesWithTheSameName)
{
  unpack(set_with({{"data-files/habitat.csv", TarEntry::FILE, "last"}}));
  EXPECT_EQ(Severity::warning, findings.front().severity);
  EXPECT_EQ("last", unpacked["data-files/habitat.csv"]);
}

TEST_F(DataUnpackTest, RefusesAFileThatItsOwnerCouldNotRead)
{
  fs::create_directories(place.dir + "top");
  fs::copy(set.dir, place.dir + "top/data-files");
  run("tar -C '" + place.dir + "top' --mode=0200 -cjf '" + archive + "' data-files/habitat.csv");
  EXPECT_EQ(Rules{"archive-unreadable"}, unpack());
}

// --- sizes ---

TEST_F(DataUnpackTest, StopsAtAFileThatIsLargerThanTheProgramAllows)
{
  fs::create_directories(place.dir + "top");
  fs::copy(set.dir, place.dir + "top/data-files");
  fs::resize_file(place.dir + "top/data-files/region-info.csv", std::uintmax_t{1} << 40);
  run("tar -C '" + place.dir + "top' -S -cjf '" + archive + "' data-files/region-info.csv");
  EXPECT_EQ(Rules{"archive-file-too-large"}, unpack());
  EXPECT_TRUE(unpacked.empty());
}

TEST_F(DataUnpackTest, AcceptsAFileThatIsAsLargeAsTheProgramAllows)
{
  fs::create_directories(place.dir + "top/data-files");
  write_file(place.dir + "top/data-files/habitat.csv", "");
  fs::resize_file(place.dir + "top/data-files/habitat.csv", 33'554'432);
  run("tar -C '" + place.dir + "top' -S -cjf '" + archive + "' data-files");
  EXPECT_EQ(Rules{}, unpack());
  EXPECT_EQ("large", unpacked["data-files/habitat.csv"]);
}

TEST_F(DataUnpackTest, StopsAtMoreEntriesThanASetCanHave)
{
  Entries entries;
  for (int i = 0; i <= 10'000; ++i)
    entries.push_back({"data-files", TarEntry::DIRECTORY, ""});
  EXPECT_EQ(Rules{"archive-too-large"}, unpack(entries));
}

TEST_F(DataUnpackTest, StopsAtMoreBytesThanASetCanHave)
{
  fs::create_directories(place.dir + "top");
  for (int i = 0; i < 17; ++i) {
    const std::string name = place.dir + "top/" + std::to_string(i);
    write_file(name, "");
    fs::resize_file(name, 32 << 20);
  }
  run("tar -C '" + place.dir + "top' -S -cjf '" + archive + "' .");
  const Rules rules = unpack();
  EXPECT_EQ(17U, rules.size()) << "16 findings are about files that are not in data-files";
  EXPECT_EQ("archive-too-large", rules.back());
}

// --- damage ---

TEST_F(DataUnpackTest, ReportsATruncatedArchive)
{
  write_archive(archive, complete_set());
  fs::resize_file(archive, fs::file_size(archive) / 2);
  const Rules rules = unpack();
  ASSERT_EQ(1U, rules.size());
  EXPECT_EQ("archive-damaged", rules.front());
  EXPECT_FALSE(is_complete);
}

TEST_F(DataUnpackTest, ReportsAFileThatIsNotAnArchive)
{
  for (const char* const text : {"", "BZh9", "BZh91AY&SY", "no archive at all"}) {
    write_file(archive, text);
    EXPECT_EQ(Rules{"archive-damaged"}, unpack()) << text;
    EXPECT_EQ(archive, findings.front().file);
  }
}

TEST_F(DataUnpackTest, RefusesArchivesThatTheProgramCannotUnpack)
{
  fs::create_directories(place.dir + "top");
  fs::copy(set.dir, place.dir + "top/data-files");
  const std::string tar = "tar -C '" + place.dir + "top' -c data-files";
  for (const char* const filter : {"cat", "bzip2 | bzip2"}) {
    run(tar + " | " + filter + " >'" + archive + "'");
    EXPECT_EQ(Rules{"archive-not-bzip2"}, unpack()) << filter;
  }
  run(tar + " | gzip >'" + archive + "'");
  EXPECT_EQ(Rules{"archive-damaged"}, unpack());
}

// --- cleaning up ---

TEST_F(DataUnpackDeathTest, LeavesNothingWhenASignalEndsIt)
{
  write_archive(archive, complete_set());
  const auto interrupt = [this] {
    try {
      const ScratchDirectory scratch;
      raise(SIGTERM);
      unpack_data_archive(archive, scratch);
    } catch (const Glib::ustring&) {
      std::exit(1);
    }
  };
  EXPECT_EXIT(interrupt(), testing::KilledBySignal(SIGTERM), "");
  EXPECT_TRUE(fs::is_empty(place.dir + "tmp"));
}
