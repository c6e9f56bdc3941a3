// A keystroke in the search for a zone.
#include "data/region-info.h"
#include "ui/zone-tree.h"

#include <benchmark/benchmark.h>

namespace {

void search_zones(benchmark::State& state, const char* search)
{
  static RegionInfo regions(MAVO_DATA_FILES);
  const RegionFishInfo& fish = regions.region_fish["CAR"];
  for (auto _ : state)
    benchmark::DoNotOptimize(zone_tree_rows(fish.geog_ids, fish.geog_names, "CAR", "CAR", search));
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(fish.geog_ids.size()));
}
BENCHMARK_CAPTURE(search_zones, all, "")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(search_zones, some, "reef")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(search_zones, none, "zzzz")->Unit(benchmark::kMicrosecond);

} // namespace
