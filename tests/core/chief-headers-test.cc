// Checks that the chief header of each folder includes all headers of the folder.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace fs = std::filesystem;

namespace {

std::string text_of(const fs::path& path)
{
  std::ifstream file(path);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

struct Folder {
  const char* name;
  const char* chief;
};

constexpr Folder folders[] = {
    {"cli", "cli.h"},       {"core", "misc.h"},          {"data", "survey-data.h"},
    {"server", "server.h"}, {"store", "survey-store.h"}, {"ui", "survey-ui.h"}};

} // namespace

TEST(ChiefHeaders, IncludeAllHeadersOfTheirFolders)
{
  for (const auto& [name, chief] : folders) {
    const fs::path folder = fs::path(MAVO_SOURCES) / name;
    const std::string included = text_of(folder / chief);
    for (const auto& entry : fs::directory_iterator(folder)) {
      const std::string header = entry.path().filename().string();
      if (entry.path().extension() != ".h" || header == chief)
        continue;
      EXPECT_NE(std::string::npos, included.find("\"" + (name + ("/" + header)) + "\""))
          << name << "/" << chief << " lacks " << header;
    }
  }
}
