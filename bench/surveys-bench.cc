// Measures the Start panel's list of all saved surveys.
#include "core/my-app.h"
#include "support/bench-window.h"
#include "ui/start-panel.h"
#include "ui/survey-window.h"

#include <libxml/parser.h>

#include <filesystem>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

std::vector<std::string> files_in(const std::string& directory)
{
  std::vector<std::string> paths;
  for (const auto& entry : fs::recursive_directory_iterator(directory))
    if (entry.is_regular_file())
      paths.push_back(entry.path().string());
  return paths;
}

// Counts the rows of files, and those without a description.
void count_surveys(const Gtk::TreeNodeChildren& rows, const SurveyTreeColumns& columns,
                   std::size_t& surveys, std::size_t& corrupted)
{
  for (const auto& row : rows) {
    const std::string path = row[columns.path];
    const Glib::ustring description = row[columns.description];
    surveys += path.empty() ? 0 : 1;
    corrupted += description.raw() == "(corrupted survey file)" ? 1 : 0;
    count_surveys(row.children(), columns, surveys, corrupted);
  }
}

void measure_list(benchmark::State& state, StartPanel& panel, std::size_t expected)
{
  for (auto _ : state)
    panel.build_survey_model();
  settle_windows();
  std::size_t surveys = 0;
  std::size_t corrupted = 0;
  count_surveys(panel.store->children(), panel.columns, surveys, corrupted);
  check_result(state, surveys == expected && corrupted == 0, "surveys are missing");
}

void measure_parser(benchmark::State& state, const std::vector<std::string>& files)
{
  std::size_t parsed = 0;
  for (auto _ : state) {
    parsed = 0;
    for (const auto& path : files) {
      xmlDoc* const document = xmlReadFile(path.c_str(), nullptr, 0);
      parsed += document ? 1 : 0;
      xmlFreeDoc(document);
    }
  }
  check_result(state, parsed == files.size(), "a file could not be parsed");
}

} // namespace

void register_benchmarks()
{
  const BenchData data = bench_data_sets().front();
  for (const auto& store : bench_stores()) {
    // The program's own path has no slash at its end.
    MyApp& program = bench_program(data, store.directory.substr(0, store.directory.size() - 1));
    StartPanel* const panel = bench_window(program).start_panel;
    const auto files = files_in(store.directory);
    bench_one("survey_list", "ours", store.name,
              [=](benchmark::State& state) { measure_list(state, *panel, files.size()); });
    bench_one("survey_list", "xmlReadFile", store.name,
              [=](benchmark::State& state) { measure_parser(state, files); });
  }
}
