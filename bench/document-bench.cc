// Writing a survey's document, which each test for unsaved changes does twice.
#include "store/survey-document.h"

#include <benchmark/benchmark.h>

namespace {

void write_document(benchmark::State& state)
{
  SurveyForm form;
  form.member_id = "1234";
  form.last_name = "N\u00fa\u00f1ez & Sons";
  form.subregion = "PNW";
  std::vector<SpeciesSighting> species;
  for (int id = 1; id <= state.range(0); ++id)
    species.push_back({id, 2, 102});
  for (auto _ : state)
    benchmark::DoNotOptimize(survey_document(form, species, "Linux"));
}
BENCHMARK(write_document)->Arg(0)->Arg(100)->Arg(300)->Unit(benchmark::kMicrosecond);

} // namespace
