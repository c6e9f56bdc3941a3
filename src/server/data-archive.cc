#include "server/data-archive.h"

#include "core/c-resource.h"
#include "core/report.h"
#include "data/former-data.h"

#include <array>
#include <cstdio>
#include <utility>
#include <vector>

namespace fs = std::filesystem;

namespace {

// Stands for the status of a command that could not even be started.
constexpr int not_started = -77;

// The status of this is that of tar, so what bzip2 has to say counts only through
// what tar makes of its input.
std::string unpacking_command(const std::string& archive, const std::string& directory)
{
  return "bzip2 -dkc '" + archive + "' | tar -C '" + directory + "' -xvf - 2>&1";
}

struct CommandResult {
  int status;
  std::string output;
};

CommandResult run(const std::string& command)
{
  Pipe pipe(popen(command.c_str(), "r"));
  if (!pipe)
    return {not_started, ""};
  std::string output;
  std::array<char, 1024> block;
  while (!std::feof(pipe.get()) && !std::ferror(pipe.get()))
    output.append(block.data(), std::fread(block.data(), 1, block.size(), pipe.get()));
  return {pclose(pipe.release()), output};
}

} // namespace

std::error_code remove_links_and_pipes(const fs::path& directory)
{
  std::error_code failure;
  if (!fs::is_directory(directory, failure))
    return {}; // whoever writes there will say so
  std::vector<fs::path> found;
  for (fs::recursive_directory_iterator entry(directory, failure), end; !failure && entry != end;
       entry.increment(failure)) {
    const fs::file_status status = entry->symlink_status(failure);
    if (!fs::is_regular_file(status) && !fs::is_directory(status))
      found.push_back(entry->path());
  }
  for (const auto& path : found) {
    if (!failure)
      fs::remove(path, failure);
  }
  return failure;
}

Unpacked unpack_archive(const std::string& archive, const std::string& directory)
{
  Unpacked unpacked;
  unpacked.command = unpacking_command(archive, directory);
  FormerData former(directory);
  unpacked.failure = former.failure();
  if (unpacked.failure)
    return unpacked;
  if (debug_level > 0)
    std::printf("About to run: %s\n", unpacked.command.c_str());
  CommandResult result = run(unpacked.command);
  unpacked.status = result.status;
  unpacked.output = std::move(result.output);
  if (unpacked.status == 0)
    unpacked.failure = former.let_go();
  return unpacked;
}
