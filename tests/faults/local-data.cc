#include "faults/local-data.h"

#include "core/c-resource.h"
#include "data/data-backup.h"
#include "server/data-archive.h"
#include "store/replace-file.h"
#include "support/data-set.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <utility>

namespace fs = std::filesystem;

namespace {

const char* const not_in_archive = "own-notes.txt";
const char* const large_file = "data-large.txt"; // its name is in the middle of the archive

Files files_of_set(const std::string& timestamp, const std::string& ending)
{
  const DataSet set;
  set.minimal();
  set.file("data-file-info.txt", "version=1\ntimestamp=" + timestamp + "\nupdated=today\n");
  Files files = files_below(set.dir);
  for (auto& [path, text] : files)
    text += ending;
  return files;
}

void write_files(const Files& files, const std::string& directory)
{
  for (const auto& [path, text] : files)
    write_file(directory + "/" + path, text);
}

void pack(const std::string& directory, const std::string& filter, const std::string& archive)
{
  const std::string command = "LC_ALL=C tar -C '" + directory +
                              "' --sort=name -cf - data-files | " + filter + " | bzip2 -c >'" +
                              archive + "'";
  EXPECT_EQ(0, std::system(command.c_str()));
}

} // namespace

const char* const LocalData::old_timestamp = "20220202000000";
const char* const LocalData::new_timestamp = "20230303000000";

Files files_below(const std::string& directory)
{
  Files files;
  if (!fs::exists(directory))
    return files;
  for (const auto& entry : fs::recursive_directory_iterator(directory)) {
    EXPECT_TRUE(entry.is_directory() || entry.is_regular_file()) << entry.path();
    if (entry.is_regular_file())
      files[fs::relative(entry.path(), directory).string()] = read_file(entry.path().string());
  }
  return files;
}

LocalData::LocalData(std::string directory_, const std::string& scratch)
    : directory(std::move(directory_)),
      old_set(files_of_set(old_timestamp, "")),
      new_set(files_of_set(new_timestamp, "\n")), // readers skip the additional empty line
      complete(scratch + "/whole.tar.bz2"),
      truncated(scratch + "/cut.tar.bz2")
{
  new_set[large_file] = std::string(20'000, 'x');
  write_files(new_set, scratch + "/new/data-files");
  pack(scratch + "/new", "cat", complete);
  pack(scratch + "/new", "head -c 20000", truncated);
  old_set[not_in_archive] = "mine";
  new_set[not_in_archive] = "mine";
}

void LocalData::start_with_old_data() const
{
  start_with_nothing();
  write_files(old_set, directory + "/data-files");
  write_file(directory + "/" + DataBackup::archive_name, "older");
}

void LocalData::start_with_nothing() const
{
  fs::remove_all(directory);
  fs::remove_all(backup());
  // With plain POSIX, a killed program leaves a temporary file, and each program lists them all.
  for (const auto& entry : fs::directory_iterator(fs::path(directory).parent_path())) {
    if (entry.path().filename().string().rfind(".mavo-survey-unnamed-", 0) == 0)
      fs::remove(entry.path());
  }
}

void LocalData::start_with_torn_data() const
{
  start_with_old_data();
  write_files(old_set, backup() + "/kept/data-files");
  bool is_new = true; // alternates
  for (const auto& [path, text] : new_set) {
    if (is_new)
      write_file(directory + "/data-files/" + path, text);
    is_new = !is_new;
  }
  EXPECT_EQ(TORN, now());
}

std::string LocalData::backup() const
{
  const fs::path local = directory;
  return local.parent_path() / ("." + local.filename().string() + "-before-update");
}

void LocalData::install(Archive which) const
{
  const std::string body = read_file(archive(which));
  fs::create_directories(directory);
  DataBackup backup(directory);
  EXPECT_FALSE(backup.failure());
  replace_file(directory + "/" + DataBackup::archive_name, body.data(), body.size(), "");
  unpack_archive(directory + "/" + DataBackup::archive_name, directory, backup);
}

LocalData::Set LocalData::now() const
{
  const Files files = files_below(directory + "/data-files");
  Files new_alone = new_set; // without the file that the archive lacks
  new_alone.erase(not_in_archive);
  if (files.empty())
    return NONE;
  if (files == old_set)
    return OLD;
  return files == new_set || files == new_alone ? NEW : TORN;
}

std::string LocalData::leftovers() const
{
  std::string names = fs::exists(backup()) ? "backup " : "";
  if (!fs::exists(directory))
    return names;
  for (const auto& entry : fs::directory_iterator(directory)) {
    const std::string name = entry.path().filename().string();
    const bool is_temporary = name.rfind(".goutputstream-", 0) == 0;
    if (name != "data-files" && name != DataBackup::archive_name)
      names += (is_temporary ? ".goutputstream-" : name) + " ";
  }
  return names;
}
