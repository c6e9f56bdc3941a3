// Checks that the plain libraries include only headers of their own layer or of a lower one.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

// The folders with plain libraries, the lowest first. Each has the prefixes of the third-party
// headers that it may include besides the C and C++ libraries, GLib and their bindings.
struct Layer {
  const char* folder;
  std::vector<const char*> libraries;
};
const std::array<Layer, 4> layers{{{"core", {"pango/"}},
                                   {"data", {}},
                                   {"store", {"libxml++/", "libxml/"}},
                                   {"cli", {"libxml++/", "libxml/"}}}};

// Prefixes of headers that only some layers, or none, may include.
const std::array<const char*, 8> restricted = {"gtk",     "gdk",   "libsoup/", "libxml++/",
                                               "libxml/", "pango", "cairo",    "atk"};

bool begins_with(const std::string& text, const std::string& prefix)
{
  return text.rfind(prefix, 0) == 0;
}

// Returns the sources of the plain libraries by their paths in src, such as "core/report.cc".
std::set<std::string> plain_sources()
{
  std::set<std::string> paths;
  std::istringstream list(MAVO_PLAIN_SOURCES);
  for (std::string path; std::getline(list, path, ':');)
    paths.insert(fs::path(path).lexically_relative(MAVO_SOURCES).string());
  return paths;
}

// Returns the names in #include lines, with the opening mark: "\"core/report.h" or "<gtk/gtk.h".
std::vector<std::string> includes_of(const std::string& path)
{
  std::vector<std::string> names;
  std::ifstream file(fs::path(MAVO_SOURCES) / path);
  EXPECT_TRUE(file.is_open()) << path;
  for (std::string line; std::getline(file, line);) {
    const std::size_t start = line.find_first_of("<\"");
    if (begins_with(line, "#include") && start != std::string::npos)
      names.push_back(line.substr(start, line.find_first_of(">\"", start + 1) - start));
  }
  return names;
}

// Returns the index of the folder of `path` in `layers`, or the size of `layers` for other folders.
std::size_t layer_of(const std::string& path)
{
  const auto found = std::find_if(layers.begin(), layers.end(), [&](const Layer& layer) {
    return begins_with(path, std::string(layer.folder) + "/");
  });
  return static_cast<std::size_t>(found - layers.begin());
}

bool may_include_library(const Layer& layer, const std::string& header)
{
  const auto matches = [&](const char* prefix) { return begins_with(header, prefix); };
  return std::none_of(restricted.begin(), restricted.end(), matches) ||
         std::any_of(layer.libraries.begin(), layer.libraries.end(), matches);
}

// Returns whether the source or header `path` may include `header` of the program. A header
// belongs to the library of its source. A header without a source belongs to all libraries.
bool may_include_own(const std::string& path, const std::string& header)
{
  const std::string source = fs::path(header).replace_extension(".cc").string();
  const bool is_upper =
      fs::exists(fs::path(MAVO_SOURCES) / source) && plain_sources().count(source) == 0;
  return layer_of(header) <= layer_of(path) && !is_upper;
}

// Checks a file and all files of the program that it includes.
void check_includes(const std::string& path, std::set<std::string>& seen)
{
  if (!seen.insert(path).second)
    return;
  for (const std::string& include : includes_of(path)) {
    const std::string header = include.substr(1);
    if (include.front() == '<') {
      EXPECT_TRUE(may_include_library(layers.at(layer_of(path)), header)) << path << ": " << header;
      continue;
    }
    const bool allowed = may_include_own(path, header);
    EXPECT_TRUE(allowed) << path << " includes " << header << " of a layer above";
    if (allowed)
      check_includes(header, seen);
  }
}

} // namespace

TEST(PlainLibraries, IncludeNothingOfTheLayersAbove)
{
  std::set<std::string> seen;
  for (const std::string& path : plain_sources())
    check_includes(path, seen);
  EXPECT_LT(plain_sources().size(), seen.size()); // their headers too
}

TEST(PlainLibraries, ContainAllSourcesOfTheReferenceData)
{
  for (const auto& entry : fs::directory_iterator(fs::path(MAVO_SOURCES) / "data")) {
    const std::string name = entry.path().filename().string();
    if (entry.path().extension() == ".cc") {
      EXPECT_EQ(1U, plain_sources().count("data/" + name)) << name;
    }
  }
}
