#include "cli/verify-command.h"

#include "data/data-file.h"

#include <algorithm>
#include <filesystem>

#include "cli/could-not-run.h"
#include "cli/data-set-check.h"
#include "cli/data-unpack.h"

namespace fs = std::filesystem;

namespace {

using Findings = std::vector<Finding>;

Finding archive_fault(const std::string& archive, const char* rule, const std::string& consequence)
{
  return {archive, std::nullopt, rule, Severity::error, consequence};
}

// Adds the faults of the unpacked set. The paths in them begin with the path of the archive.
// Omits hints, because they are only for authors of a set.
void add_faults_of_set(const std::string& archive, const fs::path& scratch, Findings& findings)
{
  const fs::path set = scratch / "data-files";
  if (!fs::is_directory(set)) {
    findings.push_back(archive_fault(archive, "archive-empty",
                                     "The archive has no file in a directory data-files. The "
                                     "program would continue to use its present data"));
    return;
  }
  for (Finding finding : check_data_set(set.string())) {
    if (finding.severity == Severity::hint)
      continue;
    finding.file = archive + finding.file.substr(scratch.native().size());
    findings.push_back(finding);
  }
}

Findings verify(const std::string& archive)
{
  if (!fs::is_regular_file(archive))
    throw CouldNotRun(archive + " is not a regular file");
  if (fs::file_size(archive) > largest_data_archive) {
    return {archive_fault(archive, "archive-too-large",
                          "The archive has more than " + std::to_string(largest_data_archive) +
                              " bytes. The program would not download it")};
  }
  const ScratchDirectory scratch;
  UnpackedSet unpacked = unpack_data_archive(archive, scratch);
  if (unpacked.is_complete)
    add_faults_of_set(archive, scratch.path, unpacked.findings);
  return unpacked.findings;
}

} // namespace

void VerifyCommand::add_options(Glib::OptionGroup& options)
{
  finding_options.add_to(options);
}

ExitStatus VerifyCommand::run(const std::vector<std::string>& arguments, Output& out)
{
  FindingWriter writer = finding_options.make_writer(out);
  for (const std::string& archive : arguments)
    for (const Finding& finding : verify(archive))
      writer.write(finding);
  return writer.status();
}
