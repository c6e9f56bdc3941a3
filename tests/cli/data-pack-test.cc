#include "support/data-set.h"
#include "support/output.h"

#include <glibmm/ustring.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <map>

#include "cli/archive-handle.h"
#include "cli/data-pack.h"

namespace fs = std::filesystem;

namespace {

std::string pack(const std::string& dir)
{
  std::string bytes;
  output_of([&] { bytes = pack_data_set(dir); });
  return bytes;
}

struct PackedFile {
  std::string contents;
  mode_t mode;
  la_int64_t owner;
  std::time_t time;
};

std::map<std::string, PackedFile> files_in(const std::string& bytes)
{
  const ArchiveReader reader(archive_read_new());
  archive_read_support_filter_bzip2(reader.get());
  archive_read_support_format_tar(reader.get());
  EXPECT_EQ(ARCHIVE_OK, archive_read_open_memory(reader.get(), bytes.data(), bytes.size()));
  std::map<std::string, PackedFile> files;
  archive_entry* entry = nullptr;
  while (archive_read_next_header(reader.get(), &entry) == ARCHIVE_OK) {
    std::string contents(static_cast<std::size_t>(archive_entry_size(entry)), ' ');
    archive_read_data(reader.get(), contents.data(), contents.size());
    files[archive_entry_pathname(entry)] = {contents, archive_entry_mode(entry),
                                            archive_entry_uid(entry) + archive_entry_gid(entry),
                                            archive_entry_mtime(entry)};
  }
  return files;
}

} // namespace

TEST(DataPack, ContainsAllFilesOfTheSetAndNoOthers)
{
  const DataSet set;
  set.minimal();
  set.file("notes.txt", "not for members");
  set.file("XXX-geog.csv", "of no region");
  set.file(".hidden", "");
  const auto files = files_in(pack(set.dir));
  EXPECT_EQ(15U, files.size());
  for (const auto& [name, file] : files) {
    ASSERT_EQ(0U, name.rfind("data-files/", 0)) << name;
    EXPECT_EQ(read_file(set.dir + name.substr(11)), file.contents) << name;
  }
  EXPECT_EQ(1U, files.count("data-files/PAC-geog.csv"));
}

TEST(DataPack, ReturnsTheSameBytesForAllTimesOwnersAndModes)
{
  const DataSet one;
  const DataSet other;
  one.minimal();
  other.minimal();
  for (const auto& file : fs::directory_iterator(other.dir)) {
    fs::last_write_time(file, fs::file_time_type::clock::now() - std::chrono::hours(10'000));
    chmod(file.path().c_str(), 0700);
    if (geteuid() == 0) {
      EXPECT_EQ(0, chown(file.path().c_str(), 1234, 4321));
    }
  }
  const std::string bytes = pack(one.dir);
  EXPECT_EQ(bytes, pack(other.dir));
  other.file("habitat.csv", read_file(other.dir + "habitat.csv") + "\n");
  EXPECT_NE(bytes, pack(other.dir));
}

TEST(DataPack, SetsAModeThatAllCanReadAndAPastTime)
{
  const DataSet set;
  set.minimal();
  for (const auto& [name, file] : files_in(pack(set.dir))) {
    EXPECT_EQ(static_cast<mode_t>(S_IFREG | 0644), file.mode) << name;
    EXPECT_EQ(0, file.owner) << name;
    EXPECT_EQ(946'684'800, file.time) << name;
  }
}

TEST(DataPack, HasNothingAfterTheCompressedData)
{
  const DataSet set;
  set.minimal();
  const std::string archive = set.dir + "a.tar.bz2";
  write_file(archive, pack(set.dir));
  const std::string test =
      "bzip2 -t '" + archive + "' 2>'" + set.dir + "said' && ! grep . '" + set.dir + "said'";
  EXPECT_EQ(0, std::system(test.c_str())) << read_file(set.dir + "said");
}

TEST(DataPack, FollowsALinkToADataFile)
{
  const DataSet set;
  const DataSet elsewhere;
  set.minimal();
  fs::rename(set.dir + "habitat.csv", elsewhere.dir + "habitat.csv");
  fs::create_symlink(elsewhere.dir + "habitat.csv", set.dir + "habitat.csv");
  EXPECT_EQ(read_file(elsewhere.dir + "habitat.csv"),
            files_in(pack(set.dir)).at("data-files/habitat.csv").contents);
}

TEST(DataPack, FailsIfAFileCannotBeRead)
{
  const auto fails = [](const std::string& dir) {
    bool failed = false;
    output_of([&] {
      try {
        pack_data_set(dir);
      } catch (const Glib::ustring&) {
        failed = true;
      }
    });
    return failed;
  };
  const DataSet set;
  set.minimal();
  set.remove("habitat.csv");
  EXPECT_TRUE(fails(set.dir));
  fs::create_directory(set.dir + "habitat.csv");
  EXPECT_TRUE(fails(set.dir));
}
