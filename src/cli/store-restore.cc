#include "cli/store-restore.h"

#include "store/file-identity.h"
#include "store/replace-file.h"
#include "store/survey-files.h"

#include <glibmm/error.h>
#include <glibmm/ustring.h>

#include <cstdio>
#include <filesystem>
#include <sstream>

#include "cli/could-not-run.h"
#include "cli/zip-reader.h"

namespace fs = std::filesystem;

namespace {

// Returns whether a name is a path inside the store, such as "Uploaded/1234.MAVO-Survey" or
// "Uploaded/".
bool is_inner_name(const std::string& name)
{
  std::istringstream parts(name);
  bool has_part = false;
  for (std::string part; std::getline(parts, part, '/'); has_part = true)
    if (part.empty() || part == "." || part == "..")
      return false;
  return has_part;
}

void make_directories(const fs::path& directory)
{
  std::error_code failure;
  fs::create_directories(directory, failure);
  if (failure)
    throw CouldNotRun("cannot create " + directory.string() + ": " + failure.message());
}

// Restores the files of an archive that check_backup() has accepted.
class RestoreRun
{
public:
  RestoreRun(fs::path the_root, FindingWriter& the_writer)
      : root(std::move(the_root)), writer(the_writer)
  {
  }

  void restore(ZipReader& zip)
  {
    while (zip.next()) {
      const fs::path path = root / zip.name();
      if (zip.is_directory())
        make_directories(path);
      else
        restore_file(path, zip.content());
    }
  }

  std::size_t restored = 0;

private:
  void restore_file(const fs::path& path, const std::string& bytes)
  {
    const std::string target = path.string();
    if (fs::exists(fs::symlink_status(path))) {
      const bool is_same = file_holds(target, bytes);
      writer.write({target,
                    {},
                    "exists",
                    Severity::error,
                    is_same ? "The file already exists, with the same content"
                            : "The file is not changed: it differs from the one in the backup"});
      return;
    }
    make_directories(path.parent_path());
    try {
      replace_file(target, bytes.data(), bytes.size(), no_existing_file);
      ++restored;
    } catch (const Glib::Error& failure) {
      throw CouldNotRun("cannot write " + target + ": " + failure.what().raw());
    }
  }

  const fs::path root;
  FindingWriter& writer;
};

} // namespace

void check_backup(const std::string& path)
{
  ZipReader zip(path);
  while (zip.next()) {
    if (!is_inner_name(zip.name()))
      throw CouldNotRun("the backup has an entry outside of the store: " + zip.name());
    if (zip.is_file())
      zip.content(); // verifies the checksum
    else if (!zip.is_directory())
      throw CouldNotRun("the backup has an entry that is neither a file nor a directory: " +
                        zip.name());
  }
}

void StoreRestore::add_options(Glib::OptionGroup& options)
{
  finding_options.add_to(options);
}

ExitStatus StoreRestore::run(const std::vector<std::string>& arguments, Output& out)
{
  const std::string root = arguments.size() > 1 ? arguments[1] : default_survey_root();
  FindingWriter writer = finding_options.make_writer(out);
  check_backup(arguments.front());
  ZipReader zip(arguments.front());
  RestoreRun run(root, writer);
  run.restore(zip);
  std::fprintf(stderr, "Files restored to %s: %zu\n", root.c_str(), run.restored);
  return writer.status();
}
