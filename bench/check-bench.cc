// Measures the check of a data set by mavo-data. The reference is loading the data set.
#include "data/survey-data.h"
#include "support/bench.h"

#include <algorithm>
#include <string>
#include <vector>

#include "cli/data-set-check.h"

namespace {

bool load(const std::string& dir)
{
  const DataFileInfo info(dir);
  RegionInfo regions(dir);
  const bool has_regions = info.valid && regions.is_valid();
  return has_regions && DataDefs(dir).is_valid() && DataParams(dir).is_valid() &&
         HabitatInfo(dir).is_valid() && AbundanceChoices(dir).is_valid() &&
         SpeciesViewInfo(dir, &regions).is_valid() && SpeciesViews(dir).is_valid();
}

bool has_error(const std::vector<Finding>& findings)
{
  return std::any_of(findings.begin(), findings.end(),
                     [](const Finding& finding) { return finding.severity == Severity::error; });
}

} // namespace

void register_benchmarks()
{
  for (const auto& data : bench_data_sets()) {
    bench_one("check", "ours", data.name, [=](benchmark::State& state) {
      std::vector<Finding> findings;
      for (auto _ : state)
        findings = check_data_set(data.directory);
      check_result(state, !has_error(findings), "the data set has errors");
    });
    bench_one("check", "load", data.name, [=](benchmark::State& state) {
      bool is_loaded = false;
      for (auto _ : state)
        is_loaded = load(data.directory);
      check_result(state, is_loaded, "the data set cannot be loaded");
    });
  }
}
