// Measures reading the reference data: only the files, and into all tables.
#include "core/my-app.h"
#include "data/survey-data.h"
#include "support/bench.h"
#include "support/temporary-directory.h"

#include <gtkmm/application.h>
#include <gtkmm/main.h>
#include <malloc.h>

#include <filesystem>
#include <fstream>
#include <memory>

#include "csv-references.h"
#include "heading-comparisons.h"

namespace fs = std::filesystem;

namespace {

// Reads and counts every field, and stores none.
class CountedFile : public FromCSV
{
public:
  explicit CountedFile(const std::string& path)
  {
    valid = CountedFile::read_file(path) == RET_SUCCESS;
  }
  RetCode process_headings(const std::vector<Glib::ustring>& the_headings) override
  {
    static const char* const none[] = {nullptr};
    return verify_headings(the_headings, none);
  }
  RetCode process_line(const std::vector<Glib::ustring>& fields) override
  {
    if (fields.empty())
      return RET_SUCCESS;
    ++rows.rows;
    for (const auto& field : fields)
      rows.bytes += field.raw().size();
    return RET_SUCCESS;
  }
  CsvRows rows;
};

CsvRows rows_of(const std::string& path)
{
  return CountedFile(path).rows;
}

template<typename Reader>
CsvRows rows_of_all(const std::vector<std::string>& paths, Reader&& read)
{
  CsvRows sum;
  for (const auto& path : paths) {
    const CsvRows rows = read(path);
    sum.rows += rows.rows;
    sum.bytes += rows.bytes;
  }
  return sum;
}

std::vector<std::string> csv_files(const std::string& directory)
{
  std::vector<std::string> paths;
  for (const auto& entry : fs::directory_iterator(directory)) {
    if (entry.path().extension() == ".csv")
      paths.push_back(entry.path().string());
  }
  return paths;
}

std::vector<std::string> species_and_zone_files(const std::string& directory)
{
  std::vector<std::string> paths;
  for (const auto& path : csv_files(directory)) {
    if (path.find("-species-info.csv") != std::string::npos ||
        path.find("-geog.csv") != std::string::npos)
      paths.push_back(path);
  }
  return paths;
}

void bench_rows(const BenchData& data)
{
  const auto paths = species_and_zone_files(data.directory);
  const auto bench = [&](const char* who, auto read) {
    bench_one("csv_rows", who, data.name, [=](benchmark::State& state) {
      CsvRows rows;
      for (auto _ : state)
        rows = rows_of_all(paths, read);
      check_result(state, rows == rows_of_all(paths, rows_of), "other rows");
    });
  };
  bench("ours", rows_of);
  bench("fccp", fccp_rows);
  bench("libcsv", libcsv_rows);
}

// The tables of the application at `directory`, which has data-files/.
class Tables
{
public:
  explicit Tables(const std::string& directory)
  {
    fs::current_path(directory);
    app = std::make_unique<MyApp>(Glib::RefPtr<Gtk::Application>());
    clear();
  }
  ~Tables()
  {
    clear();
    fs::current_path("/");
  }
  Tables(const Tables&) = delete;
  Tables& operator=(const Tables&) = delete;

  // Returns all memory to the system, as at the start of the program.
  void clear()
  {
    const auto remove = [](auto*& table) {
      delete table;
      table = nullptr;
    };
    remove(app->data_file_info);
    remove(app->data_defs);
    remove(app->data_params);
    remove(app->region_info);
    remove(app->habitat_info);
    remove(app->species_views);
    remove(app->abundance_choices);
    malloc_trim(0);
  }

  std::unique_ptr<MyApp> app;
};

std::size_t species_and_zones(const MyApp& app)
{
  std::size_t count = 0;
  for (const auto& [region, fish] : app.region_info->region_fish) {
    count += fish.geog_ids.size();
    for (std::size_t id = 0; id < fish.species.size(); ++id)
      count += fish.find_species(static_cast<int>(id)) ? 1 : 0;
  }
  return count;
}

void bench_tables(const BenchData& data)
{
  const auto root = std::make_shared<TemporaryDirectory>();
  fs::create_directory_symlink(data.directory, root->path + "data-files");
  bench_one("tables", "ours", data.name, [=](benchmark::State& state) {
    Tables tables(root->path);
    bool is_read = false;
    for (auto _ : state) {
      state.PauseTiming();
      tables.clear();
      state.ResumeTiming();
      is_read = tables.app->read_data_files() == RET_SUCCESS;
    }
    const auto rows = rows_of_all(species_and_zone_files(data.directory), rows_of).rows;
    check_result(state, is_read && species_and_zones(*tables.app) == rows,
                 "the tables are incomplete");
  });
  bench_one("tables", "split", data.name, [=](benchmark::State& state) {
    const auto paths = csv_files(data.directory);
    CsvRows rows;
    for (auto _ : state)
      rows = rows_of_all(paths, fccp_rows);
    check_result(state, rows == rows_of_all(paths, rows_of), "other rows");
  });
}

std::vector<std::string> headings_in(const std::string& directory)
{
  std::vector<std::string> headings;
  for (const auto& path : csv_files(directory)) {
    std::ifstream in(path);
    std::string line;
    std::getline(in, line);
    CsvLine row;
    row.split(line);
    headings.insert(headings.end(), row.fields().begin(), row.fields().end());
  }
  return headings;
}

std::size_t comparisons_of_fish_tables(const std::string& directory)
{
  const auto before = heading_comparisons();
  for (const auto& path : species_and_zone_files(directory)) {
    const std::string name = fs::path(path).filename().string();
    RegionFishInfo().init(directory, name.substr(0, name.find('-')));
  }
  return heading_comparisons() - before;
}

// Writes the same files without data rows.
void write_headings_alone(const std::string& from, const std::string& to)
{
  for (const auto& path : csv_files(from)) {
    std::ifstream in(path);
    std::string line;
    std::getline(in, line);
    std::ofstream(to + fs::path(path).filename().string()) << line << '\n';
  }
}

void bench_look_ups(const BenchData& data)
{
  bench_one("look_ups", "ours", data.name, [=](benchmark::State& state) {
    const TemporaryDirectory headings_alone;
    write_headings_alone(data.directory, headings_alone.path);
    count_comparisons_with(headings_in(data.directory));
    std::size_t all = 0;
    for (auto _ : state)
      all = comparisons_of_fish_tables(data.directory);
    const std::size_t once_a_file = comparisons_of_fish_tables(headings_alone.path);
    count_comparisons_with({});
    check_result(state, once_a_file > 0, "no look-up is counted");
    const auto rows = rows_of_all(species_and_zone_files(data.directory), rows_of).rows;
    state.counters["look_ups"] = static_cast<double>(all - once_a_file) / static_cast<double>(rows);
  });
}

} // namespace

void register_benchmarks()
{
  gtk_init(nullptr, nullptr);
  Gtk::Main::init_gtkmm_internals();
  for (const auto& data : bench_data_sets()) {
    bench_rows(data);
    bench_tables(data);
    bench_look_ups(data);
  }
}
