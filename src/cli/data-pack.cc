#include "cli/data-pack.h"

#include "core/c-resource.h"
#include "core/file-contents.h"
#include "data/data-file.h"
#include "data/region-info.h"

#include <fcntl.h>
#include <glibmm/stringutils.h>

#include <cerrno>
#include <ctime>
#include <optional>

#include "cli/archive-handle.h"
#include "cli/data-file-names.h"

namespace {

// The time of each file in the archive, 1 January 2000. It must be in the past, because the
// program would treat a file with a later time as one that is still being unpacked
// (is_complete_newer_set() in data/data-check.h).
constexpr std::time_t time_of_files = 946'684'800;

std::string contents_of(const std::string& path)
{
  const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  std::optional<std::string> contents;
  if (file.number >= 0)
    contents = read_bytes(file, largest_data_file + 1);
  if (!contents)
    throw path + ": " + Glib::strerror(errno);
  return *contents;
}

la_ssize_t append(archive*, void* bytes, const void* block, std::size_t size)
{
  static_cast<std::string*>(bytes)->append(static_cast<const char*>(block), size);
  return static_cast<la_ssize_t>(size);
}

void require(int result, archive* writer)
{
  if (result != ARCHIVE_OK)
    throw Glib::ustring(archive_error_string(writer));
}

void add_file(archive* writer, const std::string& name, const std::string& contents)
{
  const ArchiveEntry entry(archive_entry_new());
  archive_entry_set_pathname(entry.get(), ("data-files/" + name).c_str());
  archive_entry_set_filetype(entry.get(), AE_IFREG);
  archive_entry_set_perm(entry.get(), 0644);
  archive_entry_set_uid(entry.get(), 0);
  archive_entry_set_gid(entry.get(), 0);
  archive_entry_set_mtime(entry.get(), time_of_files, 0);
  archive_entry_set_size(entry.get(), static_cast<la_int64_t>(contents.size()));
  require(archive_write_header(writer, entry.get()), writer);
  if (archive_write_data(writer, contents.data(), contents.size()) !=
      static_cast<la_ssize_t>(contents.size()))
    require(ARCHIVE_FATAL, writer);
}

} // namespace

std::string pack_data_set(const std::string& dir)
{
  std::string bytes;
  const ArchiveWriter writer(archive_write_new());
  require(archive_write_set_format_ustar(writer.get()), writer.get());
  require(archive_write_add_filter_bzip2(writer.get()), writer.get());
  // Without this, the library pads the last block of its output, and bzip2 reports trailing data.
  require(archive_write_set_bytes_in_last_block(writer.get(), 1), writer.get());
  require(archive_write_open(writer.get(), &bytes, nullptr, &append, nullptr), writer.get());
  for (const std::string& name : data_file_names(RegionInfo(dir)))
    add_file(writer.get(), name, contents_of(dir + name));
  require(archive_write_close(writer.get()), writer.get());
  if (bytes.size() > largest_data_archive)
    throw Glib::ustring("the archive has more than " + std::to_string(largest_data_archive) +
                        " bytes");
  return bytes;
}
