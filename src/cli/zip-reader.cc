#include "cli/zip-reader.h"

#include <archive.h>
#include <archive_entry.h>

#include <array>

#include "cli/could-not-run.h"

ZipReader::ZipReader(const std::string& path) : zip(archive_read_new())
{
  constexpr std::size_t block_size = 64UL * 1024;
  archive_read_support_format_zip_seekable(zip.get());
  archive_read_set_options(zip.get(), "zip:hdrcharset=UTF-8");
  if (archive_read_open_filename(zip.get(), path.c_str(), block_size) != ARCHIVE_OK)
    fail();
}

void ZipReader::fail() const
{
  const char* const reason = archive_error_string(zip.get());
  throw CouldNotRun(std::string("cannot read the archive: ") + (reason ? reason : "unknown error"));
}

bool ZipReader::next()
{
  const int result = archive_read_next_header(zip.get(), &entry);
  if (result == ARCHIVE_EOF)
    return false;
  if (result != ARCHIVE_OK)
    fail();
  const char* const read = archive_entry_pathname(entry);
  if (!read)
    throw CouldNotRun("the archive has a name that is not UTF-8");
  entry_name = read;
  return true;
}

bool ZipReader::is_directory() const
{
  return archive_entry_filetype(entry) == AE_IFDIR;
}

bool ZipReader::is_file() const
{
  return archive_entry_filetype(entry) == AE_IFREG && !archive_entry_hardlink(entry) &&
         !archive_entry_symlink(entry);
}

std::string ZipReader::content()
{
  std::string bytes;
  std::array<char, 64UL * 1024> piece{};
  for (;;) {
    const la_ssize_t size = archive_read_data(zip.get(), piece.data(), piece.size());
    if (size < 0)
      fail();
    if (size == 0)
      return bytes;
    bytes.append(piece.data(), static_cast<std::size_t>(size));
    if (bytes.size() > largest_content)
      throw CouldNotRun(entry_name + " in the archive is too large");
  }
}
