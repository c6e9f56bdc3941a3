#include "server/data-archive.h"

#include "core/c-resource.h"
#include "core/report.h"
#include "data/former-data.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <set>
#include <sstream>
#include <utility>
#include <vector>

namespace fs = std::filesystem;

namespace {

// Stands for the status of a command that could not even be started.
constexpr int not_started = -77;

std::string unpacking_command(const std::string& archive, const std::string& directory)
{
  return "bzip2 -dkc '" + archive + "' | tar -C '" + directory + "' -xvf - 2>&1";
}

// Also lists the archive, unless it is damaged.
std::string listing_command(const std::string& archive)
{
  return "bzip2 -tq '" + archive + "' 2>&1 && bzip2 -dkc '" + archive + "' | tar -tf - 2>/dev/null";
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

std::set<std::string> lines_of(const std::string& text)
{
  std::istringstream in(text);
  std::set<std::string> lines;
  for (std::string line; std::getline(in, line);)
    lines.insert(line);
  return lines;
}

// The shell tells nothing of bzip2, and tar takes the end of its input for that of
// the archive if it is between two files. So all that the archive holds has to be
// among what tar says that it has unpacked.
void look_for_the_end(Unpacked& unpacked, const std::string& archive)
{
  std::error_code ignored;
  if (!fs::is_regular_file(fs::symlink_status(archive, ignored)))
    return; // it held an entry that took its place
  const CommandResult listed = run(listing_command(archive));
  if (listed.status != 0) {
    unpacked.status = listed.status;
    unpacked.output += listed.output;
    return;
  }
  const std::set<std::string> done = lines_of(unpacked.output);
  const std::set<std::string> held = lines_of(listed.output);
  if (!std::includes(done.begin(), done.end(), held.begin(), held.end()))
    unpacked.failure = std::make_error_code(std::errc::io_error);
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
    look_for_the_end(unpacked, archive);
  if (unpacked.status == 0 && !unpacked.failure)
    unpacked.failure = former.let_go();
  return unpacked;
}
