#include "server/data-archive.h"

#include "core/c-resource.h"
#include "core/report.h"
#include "data/data-backup.h"
#include "data/data-file.h"

#include <sys/resource.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <utility>

namespace {

// The status of a command that could not be started.
constexpr int not_started = -77;

// The limit of the stored output of a command, in bytes. An archive can have very many long
// names.
constexpr std::size_t most_output = std::size_t{16} << 20;

// Returns the command line. Its status is that of tar: a failure of bzip2 counts only if tar
// fails because of its input.
std::string unpacking_command(const std::string& archive, const std::string& directory)
{
  return "bzip2 -dkc '" + archive + "' | tar -C '" + directory + "' -xvf - 2>&1";
}

struct CommandResult {
  int status;
  std::string output;
};

// The status of a shell whose last command was killed because it wrote too large a file.
constexpr int too_large = (128 + SIGXFSZ) << 8;

// Limits, during its lifetime, the size of files that started commands can write. The system
// kills a command that exceeds the limit. A mere error is not enough, because tar ignores a
// failure to extend a sparse file.
class FileSizeLimit
{
public:
  explicit FileSizeLimit(rlim_t bytes) : old_handler(std::signal(SIGXFSZ, SIG_DFL))
  {
    getrlimit(RLIMIT_FSIZE, &old_limit);
    if (old_limit.rlim_cur <= bytes) { // does not raise the user's own limit
      std::signal(SIGXFSZ, old_handler);
      return;
    }
    const rlimit limit{bytes, old_limit.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FileSizeLimit()
  {
    setrlimit(RLIMIT_FSIZE, &old_limit);
    std::signal(SIGXFSZ, old_handler);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
  rlimit old_limit{};
  void (*old_handler)(int);
};

// Starts a command and returns a pipe from its output, or null if that fails.
Pipe start(const std::string& command)
{
  const FileSizeLimit limit(largest_data_file);
  return Pipe(popen(command.c_str(), "r"));
}

CommandResult run(const std::string& command)
{
  Pipe pipe = start(command);
  if (!pipe)
    return {not_started, ""};
  std::string output;
  std::array<char, 1024> block;
  while (!std::feof(pipe.get()) && !std::ferror(pipe.get())) {
    const std::size_t size = std::fread(block.data(), 1, block.size(), pipe.get());
    output.append(block.data(), output.size() < most_output ? size : 0);
  }
  return {pclose(pipe.release()), output};
}

} // namespace

Unpacked unpack_archive(const std::string& archive, const std::string& directory,
                        DataBackup& backup)
{
  Unpacked unpacked;
  unpacked.command = unpacking_command(archive, directory);
  if (debug_level > 0)
    std::printf("About to run: %s\n", unpacked.command.c_str());
  CommandResult result = run(unpacked.command);
  unpacked.status = result.status;
  unpacked.output = std::move(result.output);
  if (unpacked.status == too_large)
    unpacked.output += "This file has more than " + std::to_string(largest_data_file) + " bytes.\n";
  if (unpacked.status == 0)
    unpacked.failure = backup.discard();
  return unpacked;
}
