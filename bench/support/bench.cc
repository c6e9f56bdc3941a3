#include "support/bench.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

bool has_failed = false;

// Returns the directories in `folder` of the data of this run, the smallest first.
std::vector<BenchData> data_in(const char* folder)
{
  const char* const top = std::getenv("MAVO_BENCH_DATA");
  if (!top || !fs::is_directory(fs::path(top) / folder)) {
    std::fprintf(stderr, "Data to measure with are missing: start bench/run.sh\n");
    std::exit(2);
  }
  const auto bytes = [](const BenchData& data) {
    std::uintmax_t sum = 0;
    for (const auto& entry : fs::recursive_directory_iterator(data.directory))
      sum += entry.is_regular_file() ? entry.file_size() : 0;
    return sum;
  };
  std::vector<BenchData> found;
  for (const auto& entry : fs::directory_iterator(fs::path(top) / folder))
    found.push_back({entry.path().filename().string(), entry.path().string() + "/"});
  std::sort(found.begin(), found.end(),
            [&](const BenchData& a, const BenchData& b) { return bytes(a) < bytes(b); });
  return found;
}

} // namespace

std::vector<BenchData> bench_data_sets()
{
  return data_in("data-sets");
}

std::vector<BenchData> bench_stores()
{
  return data_in("stores");
}

void check_result(benchmark::State& state, bool is_correct, const char* what)
{
  if (is_correct)
    return;
  has_failed = true;
  state.SkipWithError(what);
}

int main(int argc, char** argv)
{
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv))
    return 2;
  register_benchmarks();
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return has_failed ? 1 : 0;
}
