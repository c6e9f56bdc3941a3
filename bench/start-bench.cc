// Measures from outside the time from the start of the program to its visible window, and the
// memory for it.
#include "support/bench.h"
#include "support/started-program.h"
#include "support/window-watch.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

const fs::path application_dir = MAVO_APPLICATION_DIR;
// The pages of the window, which are separate in its definition file.
const char* const panels[] = {"start_panel",  "member_panel",   "survey_panel1", "survey_panel2",
                              "listed_panel", "unlisted_panel", "confirm_panel"};

// An application directory with other data than those of the build.
class ApplicationDirectory
{
public:
  ApplicationDirectory(const fs::path& the_path, const fs::path& data_files) : path(the_path)
  {
    fs::create_directories(path);
    link(application_dir / "MacOS", "MacOS");
    link(application_dir / "resources", "resources");
    link(fs::absolute(data_files), "data-files");
  }

  // Returns the command line with which the installed command starts the program.
  std::vector<std::string> start_command() const
  {
    const std::string executable = path / "MacOS/mavo-survey";
    return {executable + "-env-setup.sh", "--exec-name", executable};
  }

private:
  void link(const fs::path& target, const char* name) const
  {
    fs::remove(path / name);
    fs::create_directory_symlink(target, path / name);
  }

  fs::path path;
};

double bytes_in(const fs::path& directory)
{
  std::uintmax_t sum = 0;
  for (const auto& file : fs::directory_iterator(directory))
    sum += file.file_size();
  return static_cast<double>(sum);
}

// Starts the program in each iteration. Reports the sum of its peak memory and `more_bytes`, the
// memory that a reference would need in addition to do the work of the program.
void measure_start(benchmark::State& state, const std::vector<std::string>& command,
                   double more_bytes)
{
  WindowWatch watch;
  double peak = 0;
  for (auto _ : state) {
    pid_t pid = 0;
    {
      const StartedProgram program(command);
      pid = program.pid;
      const bool is_shown = watch.wait_for_window(pid);
      const auto waited = std::chrono::steady_clock::now() - program.started;
      state.SetIterationTime(std::chrono::duration<double>(waited).count());
      check_result(state, is_shown, "no window");
      program.wait_until_idle();
      peak = std::max(peak, program.peak_bytes());
    }
    // Otherwise the window manager would be busy with it during the next start.
    check_result(state, watch.wait_until_gone(pid), "the window remains");
  }
  state.counters["peak_bytes"] = peak + more_bytes;
}

void register_start(const std::string& who, const std::string& size,
                    const std::vector<std::string>& command, double more_bytes)
{
  bench_one("start", who, size, [=](benchmark::State& state) {
    measure_start(state, command, more_bytes);
  })->UseManualTime();
}

} // namespace

void register_benchmarks()
{
  std::vector<BenchData> data_sets = bench_data_sets();
  data_sets.insert(data_sets.begin(), {"shipped", application_dir / "data-files"});
  const fs::path scratch = fs::path(MAVO_BARE_WINDOW).parent_path() / "applications";
  for (const auto& data : data_sets) {
    const ApplicationDirectory application(scratch / data.name, data.directory);
    register_start("ours", data.name, application.start_command(), 0);
    const double text = bytes_in(data.directory);
    std::vector<std::string> bare{MAVO_BARE_WINDOW, application_dir / "resources/survey-ui.glade"};
    register_start("bare", data.name, bare, text);
    bare.insert(bare.end(), std::begin(panels), std::end(panels));
    register_start("pages", data.name, bare, text);
  }
}
