#include "cli/zip-writer.h"

#include "cli/could-not-run.h"
#include "cli/utf8-names.h"

namespace {

constexpr std::size_t piece_size = 64UL * 1024;

} // namespace

ZipWriter::ZipWriter(OutputFile& the_output) : output(the_output), zip(archive_write_new())
{
  const auto write = [](archive*, void* writer, const void* bytes, size_t size) -> la_ssize_t {
    auto* const self = static_cast<ZipWriter*>(writer);
    try {
      self->output.write(static_cast<const char*>(bytes), size);
      return static_cast<la_ssize_t>(size);
    } catch (...) {
      self->failure = std::current_exception();
      return -1;
    }
  };
  const Utf8Names names; // the library reads the character set of the locale here
  check(archive_write_set_format_zip(zip.get()));
  check(archive_write_set_options(zip.get(), "zip:hdrcharset=UTF-8"));
  check(archive_write_set_bytes_in_last_block(zip.get(), 1)); // no padding
  check(archive_write_open2(zip.get(), this, nullptr, write, nullptr, nullptr));
}

ZipWriter::~ZipWriter()
{
  archive_write_fail(zip.get()); // has no effect on a finished archive
}

void ZipWriter::check(int result)
{
  if (result == ARCHIVE_OK)
    return;
  if (failure)
    std::rethrow_exception(failure);
  const char* const reason = archive_error_string(zip.get());
  throw CouldNotRun(std::string("cannot write the archive: ") +
                    (reason ? reason : "unknown error"));
}

// Sets no time, so that the library writes the format's earliest time. It would convert any
// other time to the local time zone.
void ZipWriter::add_header(const std::string& name, unsigned int type, std::int64_t size)
{
  const Utf8Names names;
  const ArchiveEntry entry(archive_entry_new());
  archive_entry_set_pathname(entry.get(), name.c_str());
  archive_entry_set_filetype(entry.get(), type);
  archive_entry_set_perm(entry.get(), type == AE_IFDIR ? 0755 : 0644);
  archive_entry_set_size(entry.get(), size);
  check(archive_write_header(zip.get(), entry.get()));
}

void ZipWriter::add_data(const std::string& bytes)
{
  const la_ssize_t written = archive_write_data(zip.get(), bytes.data(), bytes.size());
  if (written < 0 || static_cast<std::size_t>(written) != bytes.size())
    check(ARCHIVE_FATAL);
}

void ZipWriter::add_directory(const std::string& name)
{
  add_header(name + "/", AE_IFDIR, 0);
}

void ZipWriter::add_file(const std::string& name, const std::string& bytes)
{
  add_header(name, AE_IFREG, static_cast<std::int64_t>(bytes.size()));
  add_data(bytes);
}

void ZipWriter::add_file(const std::string& name, SpoolFile& spool)
{
  add_header(name, AE_IFREG, spool.rewind());
  for (std::string piece = spool.read(piece_size); !piece.empty(); piece = spool.read(piece_size))
    add_data(piece);
}

void ZipWriter::finish()
{
  const Utf8Names names;
  check(archive_write_close(zip.get()));
}
