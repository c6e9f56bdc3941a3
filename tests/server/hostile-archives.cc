#include "server/hostile-archives.h"

namespace {

const auto sym_link = TarEntry::LINK;
const auto hard_link = TarEntry::HARD_LINK;
const auto directory = TarEntry::DIRECTORY;

const auto file = hostile_file;

} // namespace

TarEntry hostile_file(const std::string& name)
{
  return {name, TarEntry::FILE, "not mine"};
}

std::vector<HostileArchive> hostile_archives(const std::string& outside)
{
  return {
      {"up", {file("../outside/diary.txt")}},
      {"up and new", {file("../new.txt")}},
      {"up from within", {file("data-files/../../outside/diary.txt")}},
      {"up by a directory", {{"..", directory, ""}, file("../outside/new.txt")}},
      {"absolute", {file(outside + "/diary.txt")}},
      {"absolute and new", {file(outside + "/new.txt")}},
      {"link", {{"data-files", sym_link, outside}, file("data-files/diary.txt")}},
      {"relative link", {{"data-files", sym_link, "../outside"}, file("data-files/new.txt")}},
      {"link to the file", {{"a.csv", sym_link, outside + "/diary.txt"}, file("a.csv")}},
      {"link to a link",
       {{"a", sym_link, "b"},
        {"b", sym_link, "../outside"},
        file("a/diary.txt"),
        file("b/new.txt")}},
      {"link by a link",
       {{"a", sym_link, "."},
        {"a/b", sym_link, "../outside"},
        file("a/b/new.txt"),
        file("b/diary.txt")}},
      {"link and a directory",
       {{"a", sym_link, outside}, {"a", directory, ""}, file("a/new.txt"), file("a/diary.txt")}},
      {"hard link",
       {{"data-files/a.csv", hard_link, outside + "/diary.txt"}, file("data-files/a.csv")}},
      {"relative hard link",
       {{"data-files/a.csv", hard_link, "../outside/diary.txt"}, file("data-files/a.csv")}},
      {"hard link by a link",
       {{"l", sym_link, "../outside"}, {"a.csv", hard_link, "l/diary.txt"}, file("a.csv")}},
      {"hard link to a link",
       {{"l", sym_link, "../outside"},
        {"h", hard_link, "l"},
        file("h/diary.txt"),
        file("l/new.txt")}},
      {"link in place of the archive",
       {{"current-offline-data.tar.bz2", sym_link, outside + "/diary.txt"}}},
  };
}

std::vector<HostilePair> hostile_pairs(const std::string& outside)
{
  return {
      {"directory", {{"data-files", sym_link, outside}}, {file("data-files/diary.txt")}},
      {"relative", {{"data-files", sym_link, "../outside"}}, {file("data-files/new.txt")}},
      {"deep", {{"data-files/a/b", sym_link, outside}}, {file("data-files/a/b/new.txt")}},
      {"file",
       {{"data-files/a.csv", sym_link, outside + "/diary.txt"}},
       {file("data-files/a.csv")}},
      {"by a hard link",
       {{"data-files", sym_link, outside}},
       {{"h", hard_link, "data-files/diary.txt"}, file("h")}},
      {"archive",
       {{"current-offline-data.tar.bz2", sym_link, outside + "/diary.txt"}},
       {file("a")}},
      {"archive, new",
       {{"current-offline-data.tar.bz2", sym_link, outside + "/new.txt"}},
       {file("a")}},
      {"former copy", {{"former-data-files", sym_link, outside}}, {file("data-files/a.csv")}},
      {"own directory", {{".", sym_link, outside}}, {file("new.txt")}},
  };
}

std::vector<std::vector<TarEntry>> forged_backups()
{
  const std::string backup = "../.local-before-update/kept/data-files/";
  return {
      {file("former-data-files/data-file-info.txt"), file("former-data-files/habitat.csv")},
      {{"former-data-files", directory, ""}},
      {file("former-data-files.part/habitat.csv")},
      {file("former-data-files")},
      {file(backup + "habitat.csv")},
      {{"l", sym_link, "../.local-before-update"}, file("l/kept/data-files/habitat.csv")},
  };
}
