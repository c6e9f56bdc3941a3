// Target: the unpacking of an archive of reference data by mavo-data verify. If the first byte of
// the input is even, the rest is the archive. If it is odd, the rest is the tar file in the
// archive, because the checksums of bzip2 would detect each change of a compressed file.
#include "cli/data-unpack.h"

#include <filesystem>
#include <string>

#include "cli/archive-handle.h"
#include "target.h"

namespace fs = std::filesystem;

namespace {

la_ssize_t append(archive*, void* bytes, const void* block, std::size_t size)
{
  static_cast<std::string*>(bytes)->append(static_cast<const char*>(block), size);
  return static_cast<la_ssize_t>(size);
}

std::string compressed(const std::string& bytes)
{
  std::string result;
  const ArchiveWriter writer(archive_write_new());
  archive_write_set_format_raw(writer.get());
  archive_write_add_filter_bzip2(writer.get());
  archive_write_open(writer.get(), &result, nullptr, &append, nullptr);
  const ArchiveEntry entry(archive_entry_new());
  archive_entry_set_filetype(entry.get(), AE_IFREG);
  archive_write_header(writer.get(), entry.get());
  archive_write_data(writer.get(), bytes.data(), bytes.size());
  archive_write_close(writer.get());
  return result;
}

void check_unpacked(const fs::path& scratch)
{
  for (const auto& entry : fs::recursive_directory_iterator(scratch)) {
    const fs::path name = entry.path().lexically_relative(scratch);
    require(!entry.is_symlink(), "no link is unpacked");
    if (entry.is_directory()) {
      require(name == "data-files", "the only directory is that of the set");
    } else {
      require(entry.is_regular_file() && entry.hard_link_count() == 1,
              "all other entries are regular files with one name");
      require(name.parent_path() == "data-files", "all files are in that directory");
      require(entry.file_size() <= 33'554'432, "no file exceeds the limit");
    }
  }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* input, std::size_t size)
{
  if (size == 0)
    return 0;
  const std::string bytes = bytes_of(input + 1, size - 1);
  const Scratch place;
  place.write("a.tar.bz2", input[0] % 2 == 0 ? bytes : compressed(bytes));
  const ScratchDirectory scratch;
  const UnpackedSet unpacked = unpack_data_archive(place.dir + "a.tar.bz2", scratch);
  require(unpacked.is_complete || !unpacked.findings.empty(), "a refusal has a reason");
  check_unpacked(scratch.path);
  return 0;
}
