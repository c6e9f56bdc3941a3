#pragma once

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

// What all measurements share. Each has a name of three parts, which bench/table
// puts together again: what is done, who does it ("ours", or a reference beside
// which it is to be judged), and the size of the data: "csv_rows/ours/huge".

// A data set or store that bench/make-data has written.
struct BenchData {
  std::string name;      // "huge", or "1000" of a store of so many surveys
  std::string directory; // ends in a slash
};

// The data sets and the stores that this run has, the smallest first; which, is
// up to bench/run.sh. The program ends if it was started without any.
std::vector<BenchData> bench_data_sets();
std::vector<BenchData> bench_stores();

// Each program defines this: registers its measurements by bench_one(),
// after all that they need has been set up.
void register_benchmarks();

// Registers one measurement under its name.
template<typename Function>
benchmark::internal::Benchmark* bench_one(const std::string& job, const std::string& who,
                                          const std::string& size, Function&& measure)
{
  return benchmark::RegisterBenchmark((job + "/" + who + "/" + size).c_str(),
                                      std::forward<Function>(measure))
      ->Unit(benchmark::kMicrosecond);
}

// A measurement that did not do its work is none: says so, and fails the run.
void check_result(benchmark::State& state, bool held, const char* what);
