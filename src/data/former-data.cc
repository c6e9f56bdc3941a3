#include "data/former-data.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace fs = std::filesystem;

namespace {

fs::path data_in(const fs::path& directory)
{
  return directory / "data-files";
}

// Where the former data are, as long as they are whole.
fs::path kept_in(const fs::path& directory)
{
  return directory / "former-data-files";
}

// The same while they are being made or removed.
fs::path unfinished_in(const fs::path& directory)
{
  return directory / "former-data-files.part";
}

// Opens a directory that one program at a time may have. The commands that it
// starts share the descriptor, so that whoever is next also waits for those of a
// program that was killed. Where there are no locks, there is no waiting.
int take(const fs::path& directory)
{
  // NOLINTNEXTLINE(android-cloexec-open): see above
  const int opened = open(directory.c_str(), O_RDONLY | O_DIRECTORY);
  while (opened >= 0 && flock(opened, LOCK_EX) != 0 && errno == EINTR) {
  }
  return opened;
}

void remove_tree(const fs::path& path)
{
  std::error_code ignored; // what stays behind is removed the next time
  fs::remove_all(path, ignored);
}

// Makes a copy of the data; where there are none, it is empty.
std::error_code copy_data(const fs::path& data, const fs::path& target, fs::copy_options how)
{
  remove_tree(target);
  std::error_code failure;
  if (!fs::exists(data, failure))
    fs::create_directory(target, failure);
  else
    fs::copy(data, target, fs::copy_options::recursive | how, failure);
  return failure;
}

// Whether a FormerData has put something there. An archive can have left a link of
// that name, which is nobody's data.
bool is_kept(const fs::path& kept)
{
  std::error_code ignored;
  const fs::file_status status = fs::symlink_status(kept, ignored);
  return fs::is_directory(status) || fs::is_regular_file(status);
}

// Puts back what is kept, if anything. It stays where it is after a failure, so
// that the next attempt finds it; each step leaves the data whole or not there.
std::error_code restore(const fs::path& directory)
{
  const fs::path data = data_in(directory);
  const fs::path kept = kept_in(directory);
  const fs::path unfinished = unfinished_in(directory);
  remove_tree(unfinished);
  if (!is_kept(kept))
    return {};
  std::error_code failure;
  std::error_code ignored;
  fs::rename(data, unfinished, failure);
  if (failure && fs::exists(fs::symlink_status(data, ignored)))
    return failure;
  failure.clear();
  if (rmdir(kept.c_str()) != 0) // works if it is empty, that is if there were none
    fs::rename(kept, data, failure);
  remove_tree(unfinished);
  return failure;
}

// Waits until the disk has a file or directory. Some file systems cannot; the
// file is no worse for it.
std::error_code flush_to_disk(const fs::path& path)
{
  const Descriptor file(open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  if (file.number >= 0 && fsync(file.number) != 0 && errno != EINVAL)
    return {errno, std::system_category()};
  return {};
}

std::error_code flush_tree(const fs::path& directory)
{
  std::error_code failure;
  if (!fs::is_directory(directory, failure))
    return {}; // an archive can hold other things
  const auto readable = fs::directory_options::skip_permission_denied;
  for (fs::recursive_directory_iterator entry(directory, readable, failure), end;
       !failure && entry != end; entry.increment(failure)) {
    failure = flush_to_disk(entry->path());
    if (failure)
      return failure;
  }
  return failure ? failure : flush_to_disk(directory);
}

} // namespace

FormerData::FormerData(fs::path directory_)
    : directory(std::move(directory_)), lock(take(directory))
{
  const fs::path data = data_in(directory);
  const fs::path target = unfinished_in(directory);
  not_kept = restore(directory);
  if (not_kept)
    return;
  not_kept = copy_data(data, target, fs::copy_options::create_hard_links);
  if (not_kept)
    not_kept = copy_data(data, target, fs::copy_options::none);
  if (!not_kept)
    fs::rename(target, kept_in(directory), not_kept);
}

FormerData::~FormerData()
{
  restore(directory);
}

std::error_code FormerData::let_go()
{
  std::error_code failure = flush_tree(data_in(directory));
  if (!failure)
    fs::rename(kept_in(directory), unfinished_in(directory), failure);
  return failure;
}

void FormerData::put_back(const fs::path& directory)
{
  const Descriptor lock(take(directory));
  restore(directory);
}
