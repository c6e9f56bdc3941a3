#include "data/former-data.h"

#include <system_error>
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

void remove_tree(const fs::path& path)
{
  std::error_code ignored; // what stays behind is removed the next time
  fs::remove_all(path, ignored);
}

// Whether the data now have a copy at `target`; where there are none, it is empty.
bool copy_data(const fs::path& data, const fs::path& target, fs::copy_options how)
{
  remove_tree(target);
  std::error_code failure;
  if (!fs::exists(data, failure))
    fs::create_directory(target, failure);
  else
    fs::copy(data, target, fs::copy_options::recursive | how, failure);
  return !failure;
}

} // namespace

FormerData::FormerData(fs::path directory_) : directory(std::move(directory_))
{
  const fs::path data = data_in(directory);
  const fs::path target = unfinished_in(directory);
  std::error_code ignored;
  if (copy_data(data, target, fs::copy_options::create_hard_links) ||
      copy_data(data, target, fs::copy_options::none))
    fs::rename(target, kept_in(directory), ignored);
}

FormerData::~FormerData()
{
  std::error_code ignored;
  fs::rename(kept_in(directory), unfinished_in(directory), ignored);
  remove_tree(unfinished_in(directory));
}

void FormerData::put_back(const fs::path& directory)
{
  std::error_code ignored;
  const fs::path kept = kept_in(directory);
  if (!fs::is_directory(kept, ignored))
    return;
  remove_tree(data_in(directory));
  fs::rename(kept, data_in(directory), ignored);
  fs::remove(data_in(directory), ignored); // only if empty, that is if there were none
}
