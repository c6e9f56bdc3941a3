#include "data/survey-data.h"
#include "support/data-set.h"
#include "support/output.h"

#include <cctype>
#include <cstdio>
#include <random>

#include "data-checks.h"

namespace {

// Damages a file in a way that depends only on the seed.
class Damage
{
public:
  explicit Damage(unsigned int seed) : random(seed) {}

  std::string to(std::string text)
  {
    for (std::size_t times = 1 + pick(4); times > 0; --times)
      once(text);
    return text;
  }

private:
  std::size_t pick(std::size_t count) { return random() % count; }
  std::size_t place(const std::string& text) { return pick(text.size() + 1); }

  void once(std::string& text)
  {
    static const std::string pieces[] = {"\"",
                                         "\"\"",
                                         "\\",
                                         ",",
                                         "\r",
                                         "\n",
                                         "\r\n",
                                         "\n\n",
                                         "-",
                                         std::string(1, '\0'),
                                         "\xFF",
                                         "\xC3",
                                         "\xE2\x82",
                                         "\xF0\x9F\x90",
                                         "\xED\xA0\x80",
                                         "\xFD\xBF\x80",
                                         "\xEF\xBB\xBF",
                                         "é",
                                         "99999",
                                         "100000",
                                         "2147483648",
                                         "-1",
                                         "-2147483649",
                                         "99999999999999999999",
                                         "<b>&"};
    // Compilers evaluate arguments in different orders, so one statement draws one number.
    std::size_t at = 0;
    std::string part;
    switch (pick(7)) {
    case 0: // changes a byte
      at = pick(text.size() + 1);
      if (at < text.size())
        text[at] = static_cast<char>(random() % 256);
      break;
    case 1: // truncates the text
      text.resize(place(text));
      break;
    case 2: // removes some bytes
      at = place(text);
      text.erase(at, pick(12));
      break;
    case 3: // changes a number
      replace_number(text, pieces[18 + pick(6)]);
      break;
    case 4: // duplicates a part
      at = place(text);
      part = text.substr(at, pick(60));
      text.insert(place(text), part);
      break;
    default:
      at = place(text);
      text.insert(at, pieces[pick(std::size(pieces))]);
    }
  }

  void replace_number(std::string& text, const std::string& number)
  {
    const auto is_digit = [&](std::size_t at) {
      return at < text.size() && std::isdigit(static_cast<unsigned char>(text[at]));
    };
    std::size_t begin = place(text);
    while (begin < text.size() && !is_digit(begin))
      ++begin;
    std::size_t end = begin;
    while (is_digit(end))
      ++end;
    text.replace(begin, end - begin, number);
  }

  std::mt19937 random;
};

std::size_t use_habitats(const HabitatInfo& habitats)
{
  std::size_t seen = 0;
  for (const auto& [region, ids] : habitats.region_habitat_ids) {
    for (const int id : ids) {
      if (id >= 0)
        seen += habitats.names.at(static_cast<std::size_t>(id)).size() +
                habitats.descriptions.at(static_cast<std::size_t>(id)).size();
    }
  }
  return seen;
}

// Does every look-up of the panels. Each one uses an id from another table. Returns a number that
// is greater than 0 if the tables have contents.
std::size_t use(const std::string& dir)
{
  DataDefs defs(dir);
  DataParams params(dir);
  RegionInfo regions(dir);
  HabitatInfo habitats(dir);
  AbundanceChoices abundances(dir);
  SpeciesViewInfo view_info(dir, &regions);
  SpeciesViews views(dir);

  std::size_t seen = defs.defs.size() + params.params.size();
  for (auto& [code, region] : regions.subregion_regions) {
    auto& fish = regions.region_fish[region];
    for (const auto& view : regions.subregions[code].views)
      for (const auto& row : views.species_of(view.viewid))
        seen += fish.find_species(row.speciesid) ? 1 : 0;
    for (const int type : regions.survey_types[code].values)
      seen += regions.regions.at(static_cast<std::size_t>(type)).surveytypename.size() +
              (abundances.find_subtype(type) ? 1 : 0);
    for (const int id : fish.geog_ids)
      seen += fish.geog_names[id].size();
    for (const auto& id : fish.family_ids)
      seen += fish.families[id].commonname.size();
  }
  return seen + (habitats.is_valid() ? use_habitats(habitats) : 0);
}

const char* const kinds[] = {"data-definitions.csv",  "data-parameters.csv",
                             "region-info.csv",       "CAR-family-info.csv",
                             "CAR-species-info.csv",  "CAR-geog.csv",
                             "habitat.csv",           "habitatregion.csv",
                             "abundance-choices.csv", "species-view-definitions.csv",
                             "species-views.csv"};

constexpr unsigned int variants = 300;

} // namespace

TEST(DamagedData, CannotCrashTheProgram)
{
  unsigned int count = 0;
  for (const char* name : kinds) {
    const DataSet data;
    data.minimal();
    const std::string original = read_file(data.dir + name);
    ASSERT_GT(use(data.dir), 0U);
    reported_by([&] {
      output_of([&] {
        for (unsigned int seed = 1; seed <= variants; ++seed, ++count) {
          data.file(name, Damage(seed).to(original));
          use(data.dir);
        }
      });
    });
  }
  RecordProperty("tried", static_cast<int>(count));
  EXPECT_EQ(std::size(kinds) * variants, count);
  printf("%u damaged files of %zu kinds were read\n", count, std::size(kinds));
}

TEST(DamagedData, CannotCrashTheReaderOfTheMetadata)
{
  const DataSet data;
  data.minimal();
  const std::string original = read_file(data.dir + "data-file-info.txt");
  reported_by([&] {
    output_of([&] {
      for (unsigned int seed = 1; seed <= variants; ++seed) {
        // Each line gets an equals sign, because a line without one ends the program.
        std::string damaged;
        for (const char c : Damage(seed).to(original))
          damaged += c == '\n' ? "=\n" : std::string(1, c);
        data.file("data-file-info.txt", damaged + "=");
        const DataFileInfo info(data.dir);
        EXPECT_EQ(!info.timestamp.empty() && !info.updated.empty(), info.valid);
      }
    });
  });
  RecordProperty("tried", static_cast<int>(variants));
}

TEST(DamagedData, OfRandomBytesCannotMakeTheReadersHang)
{
  const DataSet data;
  data.minimal();
  std::mt19937 random(1);
  reported_by([&] {
    output_of([&] {
      for (const char* name : kinds) {
        const std::string original = read_file(data.dir + name);
        std::string noise = original.substr(0, original.find('\n') + 1);
        for (int i = 0; i < 20'000; ++i)
          noise += static_cast<char>(random() % 256);
        data.file(name, noise);
        use(data.dir);
        data.file(name, original);
      }
    });
  });
}
