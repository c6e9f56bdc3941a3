#include "store/survey-files.h"

#include "core/file-contents.h"
#include "core/markup.h"
#include "core/report.h"
#include "core/thrown-text.h"
#include "store/file-identity.h"
#include "store/replace-file.h"
#include "store/survey-description.h"
#include "store/survey-file-name.h"
#include "store/system-file.h"

#include <giomm/error.h>
#include <giomm/file.h>
#include <giomm/fileenumerator.h>
#include <glibmm/miscutils.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <optional>

namespace {

void make_directory(const std::string& path)
{
  try {
    const auto directory = Gio::File::create_for_path(path);
    if (directory->query_file_type() == Gio::FILE_TYPE_NOT_KNOWN)
      directory->make_directory_with_parents();
  } catch (...) { // NOLINT(bugprone-empty-catch): the next use of the directory fails
  }
}

bool is_regular_file(const std::string& path)
{
  struct stat info = {};
  return stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode);
}

bool is_taken(const std::string& path)
{
  struct stat info = {};
  return lstat(path.c_str(), &info) == 0;
}

// What a move does with an existing file of the same name.
enum class Existing { keep, replace };

void remove_copied_source(const std::string& path)
{
  if (unlink(path.c_str()) != 0) {
    const int number = errno;
    std::printf("unlink of %s failed: %d = %s\n", path.c_str(), number, std::strerror(number));
  }
}

// Moves a file to another file system, which rename() cannot do. Throws if the copy fails and
// leaves the source unchanged. Refuses a pipe or a device, because reading it might never end.
void copy_and_remove(const std::string& path, const std::string& target, Existing existing)
{
  if (is_taken(path) && !is_regular_file(path))
    throw Glib::ustring("Not a regular file");
  const std::optional<std::string> loaded = load_file(path);
  if (!loaded)
    throw "load_contents() failed";
  const std::size_t size = loaded->size();
  if (debug_level > 0)
    std::printf("read %d bytes from %s; about to write them to %s\n", static_cast<int>(size),
                path.c_str(), target.c_str());

  // A survey is a text, so bytes after a zero byte are not copied.
  const std::string contents(loaded->c_str());
  replace_file(target, contents.data(), contents.size(),
               existing == Existing::keep ? no_existing_file : "");
  if (debug_level > 0)
    std::printf("wrote %d bytes to %s; about to unlink %s\n", static_cast<int>(contents.size()),
                target.c_str(), path.c_str());

  if (contents.size() == size)
    remove_copied_source(path);
  else
    std::printf("%s stays, as only its first %d of %d bytes could be copied\n", path.c_str(),
                static_cast<int>(contents.size()), static_cast<int>(size));
}

// Renames a file. Returns false and sets errno if that fails: to EEXIST if `target` exists and
// must be kept.
bool rename_file(const std::string& path, const std::string& target, Existing existing)
{
  if (existing == Existing::replace)
    return std::rename(path.c_str(), target.c_str()) == 0;
  return rename_to_free_name(path, target);
}

// Moves the file, by a copy if necessary. Returns false if the target exists and must be kept,
// also if another program has just created it. Throws if the move fails.
bool move_file(const std::string& path, const std::string& target, Existing existing)
{
  if (existing == Existing::keep && is_taken(target))
    return false;
  if (rename_file(path, target, existing))
    return true;
  const int number = errno;
  if (existing == Existing::keep && number == EEXIST)
    return false;
  if (debug_level > 0)
    std::printf("rename() of %s to %s failed: %d = %s\n", path.c_str(), target.c_str(), number,
                std::strerror(number));
  try {
    copy_and_remove(path, target, existing);
    return true;
  } catch (const Gio::Error& error) {
    if (existing == Existing::keep && error.code() == Gio::Error::WRONG_ETAG)
      return false;
    throw;
  }
}

// Returns the reason why the copy failed, with a prefix that names the source file. The line
// number in it is fixed, because the support staff recognise the text by it. REQUIRES: the
// caller is in a catch block.
std::string copy_failure()
{
  const Thrown thrown = what_was_thrown();
  if (!thrown.kind)
    return "Unknown exception at line 647 (sorry!)";
  return "(via " + std::string(thrown.kind) + ") " + thrown.text.raw();
}

} // namespace

std::string default_survey_root()
{
  std::string documents = Glib::get_user_special_dir(Glib::USER_DIRECTORY_DOCUMENTS);
  if (documents.empty())
    documents = Glib::build_filename(Glib::get_home_dir(), "Documents");
  return documents + "/MAVO-Survey";
}

const char* directory_suffix(SurveyState state)
{
  switch (state) {
  case SurveyState::IN_PROGRESS:
    return "/In Progress";
  case SurveyState::READY_TO_UPLOAD:
    return "/Ready To Upload";
  case SurveyState::UPLOADED:
    return "/Uploaded";
  case SurveyState::ROOT:
    return "";
  case SurveyState::NOT_A_SURVEY:
    break;
  }
  return "/OOPS"; // not a state of a survey; this directory is harmless
}

std::string survey_directory(std::string& root, SurveyState state)
{
  if (root.empty())
    root = default_survey_root();
  std::string path = root + directory_suffix(state);
  make_directory(path);
  if (debug_level > 0)
    std::printf("selected_dir: %s\n", path.c_str());
  return path;
}

void visit_survey_files(const std::string& directory,
                        const std::function<void(const std::string&)>& visit)
{
  const auto children = Gio::File::create_for_path(directory)->enumerate_children("standard::name");
  while (const auto child = children->next_file()) {
    const std::string path = directory + "/" + child->get_name();
    if (debug_level > 0)
      std::printf("child filename = %s\n", path.c_str());
    visit(path);
  }
}

std::vector<std::string> list_survey_files(const std::string& directory)
{
  std::vector<std::string> paths;
  visit_survey_files(directory, [&](const std::string& path) { paths.push_back(path); });
  std::sort(paths.begin(), paths.end());
  return paths;
}

std::string describe_survey_file(const std::string& path, const RegionInfo& regions,
                                 const DataDefs& defs, int* member_id)
{
  try {
    if (member_id)
      *member_id = -1;
    if (!is_regular_file(path))
      return {};
    const SurveySummary summary = read_survey_summary(path, member_id);
    return describe_survey(summary, regions, defs, !member_id).raw();
  } catch (...) {
    std::printf("File scan: %s: %s\n", path.c_str(), thrown_text("Unknown error", "").c_str());
    return {};
  }
}

std::string describe_survey_files(const std::vector<std::string>& paths, const std::string& current,
                                  const RegionInfo& regions, const DataDefs& defs)
{
  std::string text;
  for (const auto& path : paths) {
    const std::string description = describe_survey_file(path, regions, defs, nullptr);
    text += description.empty() ? path : description;
    if (same_place(path, current))
      text += " (current survey)";
    text += "\n";
  }
  return text;
}

RetCode move_survey_file(std::string& path, std::string& root, SurveyState state)
{
  const std::string directory = survey_directory(root, state);
  const std::string name = base_name(path);
  std::string target = directory + "/" + name;
  if (target == path)
    return RET_SUCCESS;
  if (same_file(Glib::path_get_dirname(path), directory)) { // two paths of the same directory
    path = target;
    return RET_SUCCESS;
  }
  const Existing existing = state == SurveyState::UPLOADED ? Existing::replace : Existing::keep;
  try {
    for (unsigned int number = 0; !move_file(path, target, existing); ++number)
      target = directory + "/" + renumbered_name(name, number);
    path = target;
    return RET_SUCCESS;
  } catch (...) {
    const std::string reason = copy_failure();
    return error("Failed to move survey file from %s to %s: %s", escape_markup(path).c_str(),
                 escape_markup(target).c_str(), escape_markup(reason).c_str());
  }
}
