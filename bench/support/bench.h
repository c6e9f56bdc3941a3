#pragma once

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

// The common part of all measurements. The name of a measurement has three parts, which
// bench/table combines: the job, who does it ("ours" or a reference), and the size of the
// data, such as "csv_rows/ours/huge".

// A data set or store that bench/make-data has written.
struct BenchData {
  std::string name;      // such as "huge", or "1000" for a store of 1,000 surveys
  std::string directory; // ends in a slash
};

// Return the data sets and the stores of this run, the smallest first. bench/run.sh determines
// them. They end the program if there are none.
std::vector<BenchData> bench_data_sets();
std::vector<BenchData> bench_stores();

// Each program defines this function. It prepares what the measurements need and registers
// them with bench_one().
void register_benchmarks();

// Registers one measurement under its name, and returns it for further settings.
template<typename Function>
benchmark::internal::Benchmark* bench_one(const std::string& job, const std::string& who,
                                          const std::string& size, Function&& measure)
{
  return benchmark::RegisterBenchmark((job + "/" + who + "/" + size).c_str(),
                                      std::forward<Function>(measure))
      ->Unit(benchmark::kMicrosecond);
}

// If `is_correct` is false, reports `what` as the error of the measurement and fails the run.
void check_result(benchmark::State& state, bool is_correct, const char* what);
