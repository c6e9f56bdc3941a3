#include "cli/store-backup.h"

#include "core/thrown-text.h"
#include "store/file-identity.h"
#include "store/survey-files.h"

#include <glibmm/checksum.h>
#include <glibmm/ustring.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <map>

#include "cli/could-not-run.h"
#include "cli/option-entry.h"
#include "cli/scratch-survey.h"
#include "cli/store-guard.h"
#include "cli/survey-paths.h"
#include "cli/zip-reader.h"
#include "cli/zip-writer.h"

namespace fs = std::filesystem;

namespace {

std::string checksum_of(const std::string& bytes)
{
  return Glib::Checksum::compute_checksum(Glib::Checksum::CHECKSUM_SHA256, bytes);
}

// Returns all paths below a directory in byte order, so that a directory precedes its contents.
std::vector<fs::path> paths_below(const fs::path& root)
{
  std::vector<fs::path> paths;
  std::error_code failure;
  fs::recursive_directory_iterator entry(root, failure);
  for (; !failure && entry != fs::recursive_directory_iterator(); entry.increment(failure))
    paths.push_back(entry->path());
  if (failure)
    throw CouldNotRun("cannot read " + root.string() + ": " + failure.message());
  std::sort(paths.begin(), paths.end());
  return paths;
}

// Packs a store and verifies the archive.
class BackupRun
{
public:
  BackupRun(fs::path the_root, FindingWriter& the_writer)
      : root(std::move(the_root)), writer(the_writer)
  {
  }

  void pack(ZipWriter& zip);
  // Reads the archive and compares its contents with the packed files.
  void verify(const std::string& archive);
  std::string summary() const;

private:
  void pack_file(ZipWriter& zip, const fs::path& path, const std::string& name);
  void verify_entry(const std::string& name, const std::string& bytes);
  void report(const fs::path& path, const char* rule, const std::string& consequence)
  {
    writer.write({path.string(), {}, rule, Severity::error, consequence});
  }

  const fs::path root;
  FindingWriter& writer;
  std::map<std::string, std::string> checksums; // the checksums of the packed files, by name
  std::size_t surveys = 0;                      // the number of valid surveys in the archive
};

void BackupRun::pack(ZipWriter& zip)
{
  for (const fs::path& path : paths_below(root)) {
    const std::string name = path.lexically_relative(root).string();
    std::error_code failure;
    if (!Glib::ustring(name).validate())
      report(path, "not-backed-up", "The file is not in the backup: its name is not UTF-8");
    else if (!fs::is_directory(path, failure))
      pack_file(zip, path, name);
    else if (fs::is_symlink(path, failure))
      report(path, "not-backed-up", "The directory is not in the backup: it is a link");
    else
      zip.add_directory(name);
  }
}

void BackupRun::pack_file(ZipWriter& zip, const fs::path& path, const std::string& name)
{
  const auto bytes = file_bytes(path.string(), ZipReader::largest_content);
  if (!bytes)
    return report(path, "not-backed-up", "The file is not in the backup: it cannot be read");
  zip.add_file(name, *bytes);
  checksums[name] = checksum_of(*bytes);
}

void BackupRun::verify(const std::string& archive)
{
  ZipReader zip(archive);
  while (zip.next())
    if (zip.is_file())
      verify_entry(zip.name(), zip.content());
  if (!checksums.empty())
    throw CouldNotRun("the backup does not contain " + checksums.begin()->first);
}

void BackupRun::verify_entry(const std::string& name, const std::string& bytes)
{
  const auto packed = checksums.find(name);
  if (packed == checksums.end() || packed->second != checksum_of(bytes))
    throw CouldNotRun("the backup differs from the file " + name);
  checksums.erase(packed);
  const fs::path path = root / name;
  if (!is_survey_path(path.string()))
    return;
  const std::string fault = ScratchSurvey(bytes).fault();
  if (fault.empty())
    ++surveys;
  else
    report(path, "not-readable", "The file is in the backup, but it is not a survey: " + fault);
}

std::string BackupRun::summary() const
{
  return std::to_string(surveys) + (surveys == 1 ? " survey" : " surveys") + " backed up";
}

} // namespace

void StoreBackup::add_options(Glib::OptionGroup& options)
{
  options.add_entry_filename(
      option_entry("output", "write the backup to FILE (required)", "FILE", 'o'), output_path);
  finding_options.add_to(options);
}

ExitStatus StoreBackup::run(const std::vector<std::string>& arguments, Output& out)
{
  const std::string root = arguments.empty() ? default_survey_root() : arguments.front();
  if (output_path.empty())
    throw CouldNotRun("--output is missing");
  if (!fs::is_directory(root))
    throw CouldNotRun(root + " is not a directory");
  if (leads_into(output_path, root))
    throw CouldNotRun(output_path + " is in the store; choose another directory");
  keep_out_of_store(output_path);

  FindingWriter writer = finding_options.make_writer(out);
  OutputFile output(output_path, OutputFile::Existing::refuse, out);
  BackupRun run(fs::path(root).lexically_normal(), writer);
  ZipWriter zip(output);
  run.pack(zip);
  zip.finish();
  output.flush();
  run.verify(output.written_path());
  output.commit();
  std::fprintf(stderr, "%s to %s\n", run.summary().c_str(), output_path.c_str());
  return writer.status();
}
