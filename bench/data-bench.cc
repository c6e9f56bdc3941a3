// Reading the reference data, which every start waits for.
#include "data/abundance-choices.h"
#include "data/csv-line.h"
#include "data/region-info.h"
#include "data/species-views.h"

#include <benchmark/benchmark.h>

#include <fstream>
#include <string>
#include <vector>

namespace {

void read_regions(benchmark::State& state)
{
  for (auto _ : state) {
    const RegionInfo regions(MAVO_DATA_FILES);
    if (!regions.is_valid())
      state.SkipWithError("the shipped data cannot be read");
  }
}
BENCHMARK(read_regions)->Unit(benchmark::kMillisecond);

void read_views(benchmark::State& state)
{
  for (auto _ : state) {
    const SpeciesViews views(MAVO_DATA_FILES);
    benchmark::DoNotOptimize(views.is_valid());
  }
}
BENCHMARK(read_views)->Unit(benchmark::kMillisecond);

std::vector<std::string> lines_of(const char* name)
{
  std::ifstream in(std::string(MAVO_DATA_FILES) + name);
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);)
    lines.push_back(line);
  return lines;
}

void split_species_lines(benchmark::State& state)
{
  const auto lines = lines_of("CAR-species-info.csv");
  std::vector<Glib::ustring> fields;
  for (auto _ : state)
    for (const auto& line : lines)
      split_csv_line(line, fields, [](std::size_t, const Glib::ustring&) {});
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(lines.size()));
}
BENCHMARK(split_species_lines);

} // namespace
