#include "cli/data-unpack.h"

#include "core/c-resource.h"
#include "data/data-file.h"

#include <fcntl.h>
#include <glibmm/stringutils.h>
#include <glibmm/ustring.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <filesystem>
#include <optional>
#include <set>

#include "cli/archive-handle.h"

namespace fs = std::filesystem;

namespace {

constexpr std::size_t block_size = 65'536;
const char* const data_directory = "data-files";

// The largest accepted number of entries. A set has far fewer files. The limit also bounds the
// number of findings.
constexpr int most_entries = 10'000;

const char* const where_it_goes = " The program would unpack it into the member's own directory";

// Returns the name for messages: in valid UTF-8 and without control characters.
std::string shown_name(const std::string& name)
{
  Glib::ustring shown;
  for (const gunichar c : Glib::ustring(name).make_valid())
    shown += g_unichar_iscntrl(c) ? gunichar{'?'} : c;
  return shown.raw();
}

std::string name_of(archive_entry* entry)
{
  const char* const name = archive_entry_pathname(entry);
  return name ? name : "";
}

bool is_link(archive_entry* entry)
{
  return archive_entry_hardlink(entry) || archive_entry_symlink(entry) ||
         archive_entry_filetype(entry) == AE_IFLNK;
}

bool is_outside(const fs::path& path)
{
  if (path.is_absolute())
    return true;
  for (const fs::path& part : path)
    if (part == "..")
      return true;
  return false;
}

// Returns the path without ".", repeated slashes and trailing slashes.
fs::path plain_path(const std::string& name)
{
  fs::path plain;
  for (const fs::path& part : fs::path(name))
    if (part != "." && !part.empty())
      plain /= part;
  return plain;
}

// Reads one archive and unpacks the accepted entries.
class Unpacking
{
public:
  Unpacking(std::string the_archive, const ScratchDirectory& the_scratch)
      : archive_path(std::move(the_archive)), scratch(the_scratch), reader(archive_read_new())
  {
  }

  UnpackedSet run()
  {
    archive_read_support_filter_bzip2(reader.get());
    archive_read_support_format_tar(reader.get());
    if (archive_read_open_filename(reader.get(), archive_path.c_str(), block_size) != ARCHIVE_OK) {
      add_damage();
      return std::move(result);
    }
    while (take_next_entry()) {
    }
    return std::move(result);
  }

private:
  void add(const std::string& file, const char* rule, Severity severity,
           const std::string& consequence)
  {
    result.findings.push_back({file, std::nullopt, rule, severity, consequence});
  }

  void add_damage()
  {
    const char* const reason = archive_error_string(reader.get());
    add(archive_path, "archive-damaged", Severity::error,
        std::string("The archive cannot be read to its end: ") +
            (reason ? shown_name(reason) : "unknown reason") +
            ". The program would not install it");
  }

  // Returns false at the end of the archive, and if reading must stop.
  bool take_next_entry()
  {
    if (scratch.signals.is_pending())
      throw Glib::ustring("interrupted");
    archive_entry* entry = nullptr;
    const int status = archive_read_next_header(reader.get(), &entry);
    result.is_complete = status == ARCHIVE_EOF;
    if (result.is_complete)
      return false;
    if (status != ARCHIVE_OK && status != ARCHIVE_WARN) {
      add_damage();
      return false;
    }
    return is_bzip2() && respects_limits(entry) && take_entry(entry);
  }

  // Returns whether bzip2 is the only compression. The library would also read a tar file without
  // compression or with two compressions.
  bool is_bzip2()
  {
    const bool is_right = archive_filter_count(reader.get()) == 2 &&
                          archive_filter_code(reader.get(), 0) == ARCHIVE_FILTER_BZIP2;
    if (!is_right) {
      add(archive_path, "archive-not-bzip2", Severity::error,
          "The archive is not a tar file that was compressed exactly once, with bzip2. The program "
          "cannot unpack it");
    }
    return is_right;
  }

  bool respects_limits(archive_entry* entry)
  {
    const la_int64_t size = archive_entry_size(entry);
    total += size;
    if (size > static_cast<la_int64_t>(largest_data_file)) {
      add(path_of(entry), "archive-file-too-large", Severity::error,
          "This file has more than " + std::to_string(largest_data_file) +
              " bytes. The program would not install the archive");
      return false;
    }
    if (++entries > most_entries || total > most_unpacked ||
        archive_filter_bytes(reader.get(), 0) > most_unpacked) {
      add(archive_path, "archive-too-large", Severity::error,
          "The archive contains more than " + std::to_string(most_entries) + " entries or " +
              std::to_string(most_unpacked) + " bytes. It would fill the member's disk");
      return false;
    }
    return true;
  }

  std::string path_of(archive_entry* entry) const
  {
    return archive_path + '/' + shown_name(name_of(entry));
  }

  // Returns false if the archive is damaged.
  bool take_entry(archive_entry* entry)
  {
    const fs::path path = plain_path(name_of(entry));
    if (const auto refusal = refusal_of(entry, path)) {
      add(path_of(entry), refusal->rule, Severity::error, refusal->reason);
      return true;
    }
    return archive_entry_filetype(entry) == AE_IFDIR || unpack(entry, path);
  }

  struct Refusal {
    const char* rule;
    std::string reason;
  };

  std::optional<Refusal> refusal_of(archive_entry* entry, const fs::path& path) const
  {
    const auto type = archive_entry_filetype(entry);
    const mode_t needed = type == AE_IFDIR ? S_IRWXU : S_IRUSR;
    if (is_outside(name_of(entry))) {
      return Refusal{"archive-outside",
                     "This entry leads out of the directory into which the archive is "
                     "unpacked. The program would not install the archive"};
    }
    if (is_link(entry))
      return Refusal{"archive-link",
                     std::string("This entry is a link, which can lead anywhere.") + where_it_goes};
    if (type != AE_IFREG && type != AE_IFDIR) {
      return Refusal{"archive-device",
                     std::string("This entry is a pipe, a device or another special file.") +
                         where_it_goes};
    }
    if (!belongs_to_set(type == AE_IFDIR, path)) {
      return Refusal{"archive-stray", std::string("This entry is not a file in the directory "
                                                  "data-files.") +
                                          where_it_goes};
    }
    if ((archive_entry_perm(entry) & needed) != needed) {
      return Refusal{"archive-unreadable",
                     "The mode of this entry prevents even its owner from reading it. The "
                     "program could not read the set"};
    }
    return std::nullopt;
  }

  static bool belongs_to_set(bool is_directory, const fs::path& path)
  {
    return is_directory ? path.empty() || path == data_directory
                        : path.parent_path() == data_directory &&
                              path.filename().native().size() <= NAME_MAX;
  }

  bool unpack(archive_entry* entry, const fs::path& path)
  {
    fs::create_directory(scratch.path / data_directory);
    if (!unpacked.insert(path).second)
      add(path_of(entry), "archive-entry-twice", Severity::warning,
          "The archive contains this file more than once. The program would use the last one");
    const std::string target = (scratch.path / path).string();
    unlink(target.c_str());
    const Descriptor file(open(target.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (file.number < 0)
      throw target + ": " + Glib::strerror(errno);
    const bool is_complete = copy_contents(archive_entry_size(entry), file, target);
    if (!is_complete)
      add_damage();
    return is_complete;
  }

  // Returns false if the archive is damaged.
  bool copy_contents(la_int64_t file_size, const Descriptor& file, const std::string& target)
  {
    const void* block = nullptr;
    std::size_t size = 0;
    la_int64_t offset = 0;
    int status = ARCHIVE_OK;
    while ((status = archive_read_data_block(reader.get(), &block, &size, &offset)) == ARCHIVE_OK) {
      if (offset + static_cast<la_int64_t>(size) > file_size)
        return false;
      if (pwrite(file.number, block, size, offset) != static_cast<ssize_t>(size))
        throw target + ": " + Glib::strerror(errno);
    }
    if (ftruncate(file.number, file_size) != 0)
      throw target + ": " + Glib::strerror(errno);
    return status == ARCHIVE_EOF;
  }

  const std::string archive_path;
  const ScratchDirectory& scratch;
  const ArchiveReader reader;
  UnpackedSet result;
  std::set<fs::path> unpacked;
  la_int64_t total = 0; // the total size of the entries so far, in bytes
  int entries = 0;
};

} // namespace

UnpackedSet unpack_data_archive(const std::string& archive, const ScratchDirectory& scratch)
{
  return Unpacking(archive, scratch).run();
}
